#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <cstdio>

#include <vector>

#include "running_service.h"

namespace fleetor::demo {
namespace {

struct Ended {
  int status = -1;
  std::string output;
};

// The demo program, its standard output and error read through one pipe.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), FLEETOR_DEMO_PROGRAM);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
      pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int ends[2];
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    child_ = ::fork();
    if (child_ == 0) {
      ::dup2(ends[1], STDOUT_FILENO);
      ::dup2(ends[1], STDERR_FILENO);
      ::execv(pointers[0], pointers.data());
      ::_exit(127);
    }
    ::close(ends[1]);
    output_ = ::fdopen(ends[0], "r");
  }
  ~Program() {
    if (child_ > 0) ::kill(child_, SIGKILL);
    std::fclose(output_);
  }

  // Up to the next line break, or to the end of the output.
  std::string read(char until = '\n') {
    std::string text;
    for (int c = 0; (c = std::fgetc(output_)) != EOF && c != until;)
      text += static_cast<char>(c);
    return text;
  }
  void signal(int number) { ::kill(child_, number); }
  Ended end() {
    const std::string output = read('\0');
    int status = 0;
    ::waitpid(std::exchange(child_, -1), &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
  }

 private:
  pid_t child_ = -1;
  std::FILE* output_ = nullptr;
};

TEST(DemoProgram, PrintsWhereItListensAndEndsCleanlyOnASignal) {
  Program program({"--port", "0", "--vehicles=3", "--seed", "9", "--fault=live=hang", "--fault", "info=500",
                   "--now", "2026-03-11 08:00:00"});
  const std::string line = program.read();
  const std::string announced = "Listening on http://127.0.0.1:";
  ASSERT_EQ(line.substr(0, announced.size()), announced);
  httplib::Client client("127.0.0.1", std::stoi(line.substr(announced.size())));
  client.set_keep_alive(true);
  const auto answer = client.Post("/token?grant_type=password", "password=demo&uid=1&username=demo",
                                  "application/x-www-form-urlencoded; charset=utf-8");
  ASSERT_TRUE(answer);
  const std::string token = Json::parse(answer->body)["token"]["access_token"].get<std::string>();
  const auto get = [&](const char* path) {
    const auto result = client.Get(path, {{"Authorization", "Bearer " + token}});
    return result ? Json::parse(result->body) : Json();
  };
  EXPECT_EQ(get("/vehicles")["total"], 3);
  EXPECT_EQ(get("/control/faults")["faults"].size(), 2u);
  const Json today = get("/route?vehid=1001&date=2026-03-11")["route"];
  EXPECT_EQ(today.back()["timeTo"].get<std::string>().substr(0, 15), "2026-03-11 08:0");
  EXPECT_EQ(get("/control/service"),
            Json({{"service", "fleetor-demo-service"}, {"version", FLEETOR_VERSION}}));

  const Ended second = Program({"--port", line.substr(announced.size())}).end();
  EXPECT_EQ(second.status, 1);
  EXPECT_NE(second.output.find("port " + line.substr(announced.size())), std::string::npos) << second.output;

  program.signal(SIGTERM);
  EXPECT_EQ(program.end().status, 0);
}

TEST(DemoProgram, RefusesAWrongOptionWithAReasonAndItsUsage) {
  const std::vector<std::string> cases[] = {{"--ports", "1"},
                                            {"--port"},
                                            {"--port=65536"},
                                            {"--port=x"},
                                            {"--vehicles=10001"},
                                            {"--seed=first"},
                                            {"--help=yes"},
                                            {"--now=yesterday"},
                                            {"--now=2026-13-01"},
                                            {"--now=9999-01-01"},
                                            {"--fault=lives"},
                                            {"--state="},
                                            {"demo"},
                                            {"--now=2026-01-01 24:00:00"}};
  for (const auto& arguments : cases) {
    const Ended ended = Program(arguments).end();
    EXPECT_EQ(ended.status, 2) << arguments[0];
    const std::string name =
        arguments[0].substr(0, arguments[0].find('=')).substr(arguments[0][0] == '-' ? 2 : 0);
    EXPECT_NE(ended.output.substr(0, ended.output.find("Usage: ")).find(name), std::string::npos)
        << ended.output;
  }
  const Ended help = Program({"--help"}).end();
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.output.find("Usage: fleetor-demo-service"), std::string::npos);
}

}  // namespace
}  // namespace fleetor::demo
