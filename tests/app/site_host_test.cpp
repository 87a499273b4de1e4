#include "app/site_host.h"

#include "tests/support/environment.h"
#include "tests/support/rows.h"

namespace ostrova::app {
namespace {

TEST(SiteHost, IsASchemeAndAHostAndNothingElse) {
    const auto check = [](const std::string& text) { return CheckHost(text, LongestSiteHost); };
    const std::string longest = "http://" + std::string(29, 'h');
    EXPECT_EQ(testing::Each("http://www.vantra.example|https://host///|HTTP://Host|http://"
                            "127.0.0.1:8080/|http://[::1]:80|" +
                                longest,
                            check),
              "http://www.vantra.example|https://host|http://Host|http://127.0.0.1:8080|http://"
              "[::1]:80|" +
                  longest);
    for (const std::string& text :
         {std::string(), std::string("http:///"), std::string("host"), std::string("file:///etc"),
          std::string(" http://host"), std::string("http://ho st"), longest + "h"}) {
        EXPECT_EQ(check(text), std::nullopt) << text;
    }
    for (const char* rest :
         {"\n", "/path", "?x", ":", ":0", ":65536", ":+80", ":80x", "@x", ":pass@x"}) {
        EXPECT_EQ(check(std::string("http://host") + rest), std::nullopt) << rest;
    }
    EXPECT_EQ(testing::Each("http://[::1|http://[]", check), "(none)|(none)");
}

TEST(SiteHost, TheEnvironmentReplacesWhatIsBuiltInOrIsComplainedOf) {
    const testing::EnvironmentVariable site("OSTROVA_SITE_HOST", "http://localhost:81/");
    const testing::EnvironmentVariable maker("OSTROVA_MAKER_HOST", "");  // as if absent
    const HostsResult found = ReadHosts();
    ASSERT_TRUE(found.hosts) << found.complaint;
    EXPECT_EQ(found.hosts->site, "http://localhost:81");
    EXPECT_EQ(found.hosts->maker, "http://www.kelvane.example");

    // Who needs the site only is not stopped by the maker's.
    const testing::EnvironmentVariable wrongMaker("OSTROVA_MAKER_HOST", "nowhere");
    EXPECT_EQ(ReadSiteHost().host, "http://localhost:81");
    EXPECT_TRUE(ReadHosts().complaint.starts_with("OSTROVA_MAKER_HOST must be"));

    // A complaint names the variable and steers no terminal.
    const testing::EnvironmentVariable wrong("OSTROVA_SITE_HOST",
                                             "\x1B[2J" + std::string(5000, 'x'));
    EXPECT_EQ(ReadHosts().complaint,
              "OSTROVA_SITE_HOST must be http://host or https://host of at most 36 characters, "
              "not '[2J" +
                  std::string(196, 'x') + "'");
}

}  // namespace
}  // namespace ostrova::app
