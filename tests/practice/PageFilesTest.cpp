#include <gtest/gtest.h>

#include <array>
#include <regex>

#include "Requests.h"
#include "practice/pages/PageTemplate.h"

namespace vantrel::practice::test {
namespace {

const std::vector<std::string> pages{"/", "/meet/PROVA", "/meet/CHIUSA", "/meet/ALTRA"};

std::string headerOf(const PracticeReply& reply, const std::string& name) {
    for (const auto& [headerName, value] : reply.headers) {
        if (headerName == name) return value;
    }
    return {};
}

/// The page's references, as written in the page.
std::vector<std::string> references(const std::string& html) {
    static const std::regex reference("(?:src|href|action|data)=\"([^\"]*)\"");
    std::vector<std::string> found;
    for (auto match = std::sregex_iterator(html.begin(), html.end(), reference); match != std::sregex_iterator();
         ++match) {
        found.push_back((*match)[1]);
    }
    return found;
}

class PageFiles : public testing::Test {
  protected:
    PracticeServer server{fourSessions(), [] { return standingTime; }};
};

TEST_F(PageFiles, APageRefersOnlyToFilesThatTheServerHas) {
    for (const std::string& page : pages) {
        const std::vector<std::string> found = references(server.handle(get(page)).body);
        EXPECT_GE(found.size(), 2U) << page;
        for (const std::string& reference : found) {
            if (reference == "data:,") continue;
            const std::string up = page == "/" ? "" : "../";
            ASSERT_EQ(reference.rfind(up + "pages/", 0), 0U) << page << ": " << reference;
            EXPECT_EQ(server.handle(get("/" + reference.substr(up.size()))).status, 200) << page << ": " << reference;
        }
    }
}

TEST_F(PageFiles, ScriptsAndStylesHaveTheirTypes) {
    const std::vector<std::array<std::string, 3>> files{
        {"meeting-contact.js", "text/javascript; charset=utf-8", "\"use strict\";"},
        {"meeting.js", "text/javascript; charset=utf-8", "\"use strict\";"},
        {"meeting-devices.js", "text/javascript; charset=utf-8", "\"use strict\";"},
        {"trainer.js", "text/javascript; charset=utf-8", "\"use strict\";"},
        {"trainer-news.js", "text/javascript; charset=utf-8", "\"use strict\";"},
        {"trainer-nodes.js", "text/javascript; charset=utf-8", "\"use strict\";"},
        {"meeting.css", "text/css; charset=utf-8", "box-sizing: border-box;"},
        {"trainer.css", "text/css; charset=utf-8", "box-sizing: border-box;"}};
    for (const auto& [name, type, held] : files) {
        const PracticeReply reply = server.handle(get("/pages/" + name));
        EXPECT_EQ(reply.contentType, type) << name;
        EXPECT_NE(reply.body.find(held), std::string::npos) << name;
        for (const std::string none : {"http", "url(", "innerHTML", "insertAdjacentHTML"})
            EXPECT_EQ(reply.body.find(none), std::string::npos) << name << ": " << none;
    }
}

TEST_F(PageFiles, AreNeitherRecordedNorBent) {
    server.handle(post("/control/reply-rule", R"({"path":"*","status":500,"body":""})"));
    EXPECT_EQ(server.handle(get("/pages/trainer.js?1")).status, 200);
    EXPECT_EQ(server.handle(post("/pages/trainer.js", "")).status, 405);
    for (const std::string path : {"/pages/other.js", "/pages/trainer.html", "/pages/", "/pages"}) {
        EXPECT_EQ(server.handle(get(path)).status, 404) << path;
    }
    EXPECT_TRUE(server.received().empty());
}

TEST_F(PageFiles, APagesPolicyAllowsNoInlineScriptAndNoFrame) {
    for (const std::string& page : pages) {
        const PracticeReply reply = server.handle(get(page));
        const std::string policy = headerOf(reply, "Content-Security-Policy") + ";";
        EXPECT_EQ(policy.find("unsafe"), std::string::npos) << policy;
        for (const std::string directive :
             {"default-src 'none';", "script-src 'self';", "style-src 'self';", "connect-src 'self';",
              "base-uri 'none';", "form-action 'none';", "frame-ancestors 'none';"}) {
            EXPECT_NE(policy.find(directive), std::string::npos) << page << ": " << policy;
        }
    }
}

TEST_F(PageFiles, APageHoldsNeitherScriptNorStyleOfItsOwn) {
    joined(server, "PROVA");
    static const std::regex inlined("<style|<script(?! src=\"[^\"]*\"></script>)| style=| on[a-z]+=|javascript:");
    for (const std::string& page : pages) {
        EXPECT_FALSE(std::regex_search(server.handle(get(page)).body, inlined)) << page;
    }
}

TEST(PageTemplate, PutsEachValueWhereItsNameStands) {
    EXPECT_EQ(filledTemplate("<b>{{a}}</b>{{b}}{{a}}", {{"a", "1"}, {"b", ""}}), "<b>1</b>1");
    EXPECT_EQ(filledTemplate("", {{"a", "1"}}), "");
}

TEST(PageTemplate, DoesNotLookThroughValuesAndLeavesWhatIsNone) {
    EXPECT_EQ(filledTemplate("{{a}}{{b}}", {{"a", "{{b}}"}, {"b", "{{a}}"}}), "{{b}}{{a}}");
    EXPECT_EQ(filledTemplate("{{c}}{{{a}}}{{a", {{"a", "1"}}), "{{c}}{{{a}}}{{a");
    EXPECT_EQ(filledTemplate("a}}{{a}}", {{"a", "1"}}), "a}}1");
}

}  // namespace
}  // namespace vantrel::practice::test
