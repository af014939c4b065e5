#include "service_test.h"

namespace fleetor::test {
namespace {

class RequestTest : public ServiceTest {
 protected:
  std::string sent() {
    queues.runUntilIdle();
    return wire(transport.last());
  }
};

constexpr const char* formType = "Content-type: application/x-www-form-urlencoded; charset=utf-8\n";

TEST_F(RequestTest, FormsAndQueriesGoOutToTheLetter) {
  API::postWithPath("/token?grant_type=password",
                    {{"username", "jan k"}, {"password", "a&b=c/d"}, {"uid", device.identifier}},
                    modelClass<TokenResponse>, {400}, completed());
  EXPECT_EQ(sent(), std::string("POST http://service.test/token?grant_type=password\n") + formType +
                        "Content-Length: 80\n\n"
                        "password=a%26b%3Dc%2Fd&uid=6F1C2A54-9D3E-4B7A-8C11-0A5E7D2B9F30&username=jan%20k");

  API::requestAuthForToken("t0ken");
  const std::string bearer = "\nAuthorization: Bearer t0ken\n";
  API::getWithPath("/vehicles", {{"offset", 0}, {"limit", 20}}, modelClass<VehiclesResponse>, {},
                   completed());
  EXPECT_EQ(sent(), "GET http://service.test/vehicles?limit=20&offset=0" + bearer);
  API::getWithPath("/live", {{"vehid", std::int64_t{9007199254740993}}}, modelClass<LiveResponse>, {},
                   completed());
  EXPECT_EQ(sent(), "GET http://service.test/live?vehid=9007199254740993" + bearer);
  API::getWithPath("/user", Params(), modelClass<UserResponse>, {}, completed());
  EXPECT_EQ(sent(), "GET http://service.test/user?" + bearer);
  for (const HttpRequest& request : transport.requests()) {
    EXPECT_EQ(request.timeoutSeconds, 30);
    EXPECT_TRUE(request.reloadIgnoringLocalCacheData);
  }
}

TEST_F(RequestTest, ResourcesAndRecordsTakeTheirOwnForms) {
  Location here;
  here.lat = "52.1";
  here.lon = "21.0";
  const std::string json =
      "Content-type: application/json; charset=utf-8\nContent-Length: "
      "27\n\n{\"lat\":\"52.1\",\"lon\":\"21.0\"}";
  API::postWithPath("/places", here, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "POST http://service.test/places\n" + json);
  API::putWithPath("/places", 12, here, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "PUT http://service.test/places/12\n" + json);
  API::deleteWithPath("/places", -3, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "DELETE http://service.test/places/-3\n");

  API::getWithPath("/places", "home", {{"dropped", 1}}, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "GET http://service.test/places/home\n");
  API::getWithPath("/places", 5, {{"dropped", 1}}, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "GET http://service.test/places/5\n");
  API::getWithPath("/places", noModelClass, {}, completed());
  EXPECT_EQ(sent(), "GET http://service.test/places\n");
}

TEST_F(RequestTest, OddParametersKeepTheirShape) {
  API::getWithPath("/a?b=1", {{"c", 2}}, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "GET http://service.test/a?b=1&c=2\n");
  API::postWithPath("/a", Params(), noModelClass, {}, completed());
  EXPECT_EQ(
      sent(),
      "POST http://service.test/a\nContent-type: jsonmodel/automatic; charset=utf-8\nContent-Length: 0\n\n");
  API::getWithPath("/a", {{"k y&", "v"}, {"Z", -1}, {"half", 0.5}, {"many", 100000.0}}, noModelClass, {},
                   completed());
  EXPECT_EQ(sent(), "GET http://service.test/a?Z=-1&half=0.5&k y&=v&many=100000\n")
      << "keys sorted by code and never escaped";

  EXPECT_EQ(urlEncode("!*'();:@&=+$,/?%#[]"), "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D");
  EXPECT_EQ(urlEncode("aZ09-._~ \"<>\\^`{|}\n"), "aZ09-._~%20%22%3C%3E%5C%5E%60%7B%7C%7D%0A");
  EXPECT_EQ(urlEncode("żó\xF0\x9F\x9A\x97"), "%C5%BC%C3%B3%F0%9F%9A%97");
}

TEST_F(RequestTest, ContentTypeFollowsTheBodyUnlessOneIsSet) {
  const auto typeOf = APIHTTPClient::contentTypeForRequestString;
  EXPECT_THAT(typeOf("[1]"), HasSubstr("application/json; charset=utf-8"));
  EXPECT_THAT(typeOf("{1]"), HasSubstr("urlencoded"));
  EXPECT_THAT(typeOf("{"), HasSubstr("urlencoded"));

  APIHTTPClient::setRequestContentType("text/plain");
  EXPECT_EQ(typeOf("{}"), "text/plain; charset=utf-8");
  API::getWithPath("/a", noModelClass, {}, completed());
  EXPECT_EQ(sent(), "GET http://service.test/a\nContent-type: text/plain\n")
      << "sent without a body, and as it is";

  APIHTTPClient::requestHeaders().setObject("x/y", "Content-Type");
  APIHTTPClient::setTimeoutInSeconds(5);
  APIHTTPClient::setCachingPolicy(RequestCachePolicy::useProtocolCachePolicy);
  APIHTTPClient::JSONFromURLWithString("http://u/", "PATCH", Params{{"ignored", 1}}, Data{"[]"},
                                       Headers{{"content-type", "last/one"}, {"X", "1"}}, false,
                                       [](auto&&...) {});
  EXPECT_EQ(sent(), "PATCH http://u/\ncontent-type: last/one\nX: 1\nContent-Length: 2\n\n[]");
  EXPECT_EQ(transport.last().timeoutSeconds, 5);
  EXPECT_FALSE(transport.last().reloadIgnoringLocalCacheData);
}

TEST_F(RequestTest, LogNamesTheRequestAndNeverTheToken) {
  API::requestAuthForToken("s3cret");
  API::postWithPath("/token", {{"password", "q\"\\\n"}, {"n", 1}}, noModelClass, {}, completed());
  API::getWithPath("/a", noModelClass, {}, completed());
  queues.runUntilIdle();
  EXPECT_THAT(log.lines(), ElementsAre("REQUEST: http://service.test/token",
                                       "REQUEST: {\"n\":1,\"password\":\"q\\\"\\\\\\u000a\"}",
                                       "REQUEST: http://service.test/a", "REQUEST: (null)"));
  EXPECT_EQ(headerOf(transport.last(), "Authorization"), "Bearer s3cret");
}

TEST_F(RequestTest, HeadersAreReadWhenTheRequestIsBuilt) {
  API::getWithPath("/a", noModelClass, {}, completed());
  API::requestAuthForToken("later");
  EXPECT_THAT(sent(), HasSubstr("Bearer later"));
}

}  // namespace
}  // namespace fleetor::test
