#include <sys/wait.h>
#include <csignal>
#include <cstdio>

#include <gtest/gtest.h>
#include <httplib.h>

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace fleetor::demo {

using Json = nlohmann::json;

namespace {

// The demo program, its standard output and error read through one pipe.
class Program {
 public:
  // `arguments` as a shell reads them.
  explicit Program(const std::string& arguments)
      : output_(::popen(("echo $$; exec " FLEETOR_DEMO_PROGRAM " " + arguments + " 2>&1").c_str(), "r")) {
    process_ = std::stoi(read());
  }
  ~Program() {
    if (output_) ::kill(process_, SIGKILL);
    if (output_) ::pclose(output_);
  }

  // Up to the next line break, or to the end of the output.
  std::string read(char until = '\n') {
    std::string text;
    for (int c = 0; (c = std::fgetc(output_)) != EOF && c != until;)
      text += static_cast<char>(c);
    return text;
  }
  void terminate() const { ::kill(process_, SIGTERM); }
  // The exit status, when the program has ended.
  int status() {
    const int status = ::pclose(std::exchange(output_, nullptr));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  std::FILE* output_;
  pid_t process_ = 0;
};

TEST(DemoProgram, PrintsWhereItListensAndEndsCleanlyOnASignal) {
  Program program(
      "--port 0 --vehicles=3 --seed 9 --fault=live=hang --fault info=500 --now '2026-03-11 08:00:00'");
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

  Program second("--port " + line.substr(announced.size()));
  EXPECT_NE(second.read().find("port " + line.substr(announced.size())), std::string::npos);
  EXPECT_EQ(second.status(), 1);

  program.terminate();
  EXPECT_EQ(program.status(), 0);
}

TEST(DemoProgram, RefusesAWrongOptionWithAReasonAndItsUsage) {
  for (const std::string arguments : {"--ports 1", "--port", "--port=65536", "--port=x", "--vehicles=10001",
                                      "--seed=first", "--help=yes", "--now=2026-13-01", "--now=9999-01-01",
                                      "--now='2026-01-01 24:00:00'", "--fault=lives", "--state=", "demo"}) {
    Program program(arguments);
    const std::string output = program.read('\0');
    const std::size_t name = output.find(arguments.substr(0, arguments.find_first_of("= ")));
    EXPECT_LT(name, output.find("Usage: fleetor-demo-service")) << output;
    EXPECT_EQ(program.status(), 2) << arguments;
  }
  Program help("--help");
  EXPECT_EQ(help.read().find("Usage: fleetor-demo-service"), 0u);
}

}  // namespace
}  // namespace fleetor::demo
