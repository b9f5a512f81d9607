// What docs/configuration.md shows and says, tried on the library. Settings, session clock and log are of the process, so
// each trial that changes them runs in a child.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Utils/U_App/Arguments.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Dump.h"
#include "Utils/U_XMLReader/Reader.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM {
namespace {

using Test::InChild;
using Test::LogCapture;
using Test::TempFolder;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

const std::string& Page() {
    static const std::string text = [] {
        std::ostringstream read;
        read << std::ifstream(KM_SOURCE_DIR "/docs/configuration.md").rdbuf();
        return read.str();
    }();
    return text;
}

bool PageHas(const std::string& text) { return Page().find(text) != std::string::npos; }

/// What stands between two marks, each time.
Texts Between(const std::string& text, const std::string& opening, const std::string& closing) {
    Texts found;
    for (std::size_t at = 0; (at = text.find(opening, at)) != std::string::npos;) {
        at += opening.size();
        const std::size_t end = text.find(closing, at);
        found.push_back(text.substr(at, end - at));
        at = std::min(end, text.size());
    }
    return found;
}

/// The fenced blocks of a language, in their order.
Texts BlocksOf(const std::string& language) {
    Texts blocks;
    std::istringstream page(Page());
    bool isInside = false;
    bool isWanted = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("```")) {
            isInside = !isInside;
            isWanted = isInside && line.substr(3) == language;
            if (isWanted) blocks.emplace_back();
        } else if (isWanted) {
            blocks.back().append(line).append("\n");
        }
    }
    return blocks;
}

/// The lines without their indentation.
Texts LinesOf(const std::string& text) {
    Texts lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in >> std::ws, line);) lines.push_back(line);
    return lines;
}

std::string Joined(const Texts& lines) {
    std::string text;
    for (const std::string& line : lines) text.append(line).append("\n");
    return text;
}

std::string DumpOf(const XML::Element& element) {
    std::ostringstream out;
    out << element;
    return out.str();
}

std::string Dump() { return DumpOf(Settings::ToXMLElement("")); }

void Merge(const std::string& text) { XML::ReadElementFromString(text, Settings::ToXMLElement(""), true); }

void CollectKeys(const XML::Element& element, std::set<std::string>& keys) {
    const std::string name = XML::GetFullName(element);
    keys.insert(name.substr(std::min(name.find('.'), name.size() - 1) + 1));
    for (const XML::Base* child : element.Children())
        if (const auto* inner = dynamic_cast<const XML::Element*>(child)) CollectKeys(*inner, keys);
}

std::set<std::string> Keys() {
    std::set<std::string> keys;
    CollectKeys(Settings::ToXMLElement(""), keys);
    return keys;
}

TEST(ConfigurationPage, HasItsExamples) {
    EXPECT_EQ(BlocksOf("xml").size(), 2u);
    EXPECT_EQ(BlocksOf("cpp").size(), 1u);
    EXPECT_EQ(BlocksOf("").size(), 1u);
}

TEST(ConfigurationPage, FileChangesSettingsThatAreThere) {
    const std::string values = InChild([]() -> std::string {
        const std::set<std::string> before = Keys();
        Application::Arguments() = {"tool", "today.xml", "/first", "/second"};
        Application::RedirectionShifting(1);
        Merge(BlocksOf("xml")[0]);
        if (Keys() != before) return "a key of the page is unknown";
        return Joined({Settings::ToString("Actions.Execute"), Settings::ToString("Debug.VerboseLevel"),
                       Settings::ToString("Debug.Path")});
    });
    EXPECT_EQ(values, "Actions.KM.Simplify\n4\n/first\n");
}

TEST(ConfigurationPage, ValuesCanStandForArguments) {
    const std::string values = InChild([] {
        Application::Arguments() = {"tool", "today.xml", "/first", "/second"};
        Application::RedirectionShifting(1);
        const LogCapture log;
        Texts texts;
        for (const char* value : {"%0", "%1", "%2", "%3"}) {
            Settings::ToXMLElement("Debug.Path").V(value);
            texts.push_back(Settings::ToString("Debug.Path"));
        }
        texts.push_back(std::to_string(log.Count(EMessageType::Error)));
        return Joined(texts);
    });
    EXPECT_EQ(values, "today.xml\n/first\n/second\n\n1\n");
}

bool LooksLikeAKey(const std::string& text) {
    const auto isLetterOrDot = [](char c) { return c == '.' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    const bool isCapital = !text.empty() && text[0] >= 'A' && text[0] <= 'Z';
    return isCapital && text.find('.') != std::string::npos && std::all_of(text.begin(), text.end(), isLetterOrDot);
}

TEST(ConfigurationPage, NamesSettingsThatAreThere) {
    const std::set<std::string> keys = Keys();
    int count = 0;
    for (std::string name : Between(Page(), "`", "`")) {
        if (!LooksLikeAKey(name)) continue;
        if (name.back() == '.') name.pop_back();
        EXPECT_TRUE(keys.contains(name)) << name;
        ++count;
    }
    EXPECT_GE(count, 5);
}

TEST(ConfigurationPage, NamesAllTypesThatSettingsHave) {
    const Texts types = Between(Dump(), "Type=\"", "\"");
    EXPECT_GT(types.size(), 50u);
    for (const std::string& type : types) EXPECT_TRUE(PageHas(std::string("`").append(type).append("`"))) << type;
}

TEST(ConfigurationPage, TellsHowValuesAreRead) {
    const struct {
        const char* text;
        int value;
    } rows[] = {{"on", 1},  {"true", 1},  {"off", 0},   {"false", 0},      {"12", 12},
                {"-3", -3}, {"b0111", 7}, {"0x1F", 31}, {"0xFFFFFFFF", -1}};
    XML::Element setting("setting");
    for (const auto& row : rows) {
        EXPECT_TRUE(PageHas(std::string("`").append(row.text).append("`"))) << row.text;
        setting.V(row.text);
        EXPECT_EQ(setting.ToInt(), row.value) << row.text;
    }
    for (const char* text : {"0.5", "1e-3"}) {
        EXPECT_TRUE(PageHas(std::string("`").append(text).append("`"))) << text;
        setting.V(text);
        EXPECT_EQ(setting.ToDouble(), std::strtod(text, nullptr));
    }
    const XML::Element empty("empty");
    EXPECT_EQ(empty.ToInt(), 1);
    EXPECT_EQ(empty.ToInt("nobody.knows"), 1);
    EXPECT_EQ(empty.ToDouble(), 0.0);
}

TEST(ConfigurationPage, TellsHowFilesAreMerged) {
    const std::string dump = InChild([] {
        XML::Element tree("Settings");
        tree["a"].V("old");
        tree["b"].V("old");
        XML::ReadElementFromString("<!--out--><Other><a>new</a><b x=\"1\"></b><b y=\"2\"/><c/><!--in--></Other>", tree,
                                   true);
        return DumpOf(tree);
    });
    EXPECT_EQ(Joined(LinesOf(dump)), "<Other>\n<a>new</a>\n<b x=\"1\" y=\"2\">old</b>\n<c></c>\n<!--in-->\n</Other>\n");
}

TEST(ConfigurationPage, TellsWhatTheReaderTakes) {
    const struct {
        const char* onPage;
        const char* text;
        const char* value;  // of the element a
    } rows[] = {
        {"`&lt;` `&gt;` `&amp;` `&apos;` `&quot;`", "<r><a>&lt;&gt;&amp;&apos;&quot;&#65;</a></r>", "<>&'\"&#65;"},
        {"two lines become one word", "<r><a> two\n lines </a></r>", "two lines"},
        {"the quotes are part of it", "<r><a>\" x\n\"y</a></r>", "\" x\n\""},
        {"the last one is the value", "<r><a>1<b/>2</a></r>", "2"},
        {"`<a></b>` closes a", "<r><a>1</b></r>", "1"},
        {"A file that ends too early is no error", "<r><a>1", "1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.onPage);
        EXPECT_TRUE(PageHas(row.onPage));
        XML::Element tree("");
        XML::ReadElementFromString(row.text, tree, true);
        EXPECT_EQ(tree.ToString("a"), row.value);
    }
}

TEST(ConfigurationPage, TellsWhatBecomesOfADeclaration) {
    const std::string declaration = "<!DOCTYPE Settings>";
    EXPECT_TRUE(PageHas(declaration));
    XML::Element tree("");
    XML::ReadElementFromString("<r>" + declaration + "</r>", tree, true);
    EXPECT_EQ(tree.ToString("!COMMENT!"), declaration.substr(4, declaration.size() - 7));
    EXPECT_ANY_THROW(XML::ReadElementFromString("<!abc>", tree, true));
}

std::string Replaced(std::string text, const std::string& word, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += by.size())
        text.replace(at, word.size(), by);
    return text;
}

/// A message as the table of the page has it, with these for its words in capitals.
std::string MessageOnPage(const std::string& begin, const std::string& name, const std::string& line) {
    const Texts rests = Between(Page(), std::string("\n| `").append(begin), "` |");
    if (rests.empty()) return "not on the page";
    const std::string text = Replaced(begin + rests[0], "`", "");
    return Replaced(Replaced(text, "NAME", name), "LINE", line);
}

TEST(ConfigurationPage, QuotesTheMessagesOfTheReader) {
    const struct {
        const char* text;
        const char* begin;
        const char* name;
        const char* line;
    } rows[] = {{"<a>\n<b x></b></a>", "Expected", "x", "1"},
                {"<a.b/>", "Expected", "", "0"},
                {"<a y=\"\n\">\n\n</a !>", "Wasn't", "a", "2"},
                {"<a/ >", "Wasn't", "a", "0"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string error = InChild([&row]() -> std::string {
            const LogCapture log;
            XML::Element tree("");
            try {
                XML::ReadElementFromString(row.text, tree, true);
            } catch (const char*) {
                return Joined(log.Texts(EMessageType::Error));
            }
            return "no error";
        });
        EXPECT_EQ(error, MessageOnPage(row.begin, row.name, row.line) + "\n");
    }
}

TEST(ConfigurationPage, ShowsLinesOfTheDump) {
    const Texts dump = LinesOf(Dump());
    for (const std::string& line : LinesOf(BlocksOf("xml")[1]))
        EXPECT_NE(std::find(dump.begin(), dump.end(), line), dump.end()) << line;
}

TEST(ConfigurationPage, IsRightThatADumpReadBackChangesNothing) {
    EXPECT_EQ(InChild([] {
                  const std::string before = Dump();
                  Merge(before);
                  return Dump() == before ? std::string("same") : Dump();
              }),
              "same");
}

TEST(ConfigurationPage, ShowsTheLegendOfTheStamps) {
    const TempFolder temp;
    temp.Write("base.xml", "<Settings/>");
    temp.Write("today.xml", "<Settings><Console><Init>Y</Init><Inti>Y</Inti></Console></Settings>");
    const std::string told = InChild([&temp] {
        std::filesystem::current_path(temp / "");
        XML::Element& settings = Settings::ToXMLElement("");
        for (const char* file : {"base.xml", "today.xml"}) XML::ReadElement(file, settings, true);
        XML::SetIsDumpSettingSession(true);
        const std::string stamps = DumpOf(Settings::ToXMLElement("Console"));
        const LogCapture log;
        std::ostringstream unused;
        XML::DumpSessionSettingNameTable(unused);
        return Joined(log.Texts(EMessageType::Info)) + stamps;
    });
    EXPECT_NE(told.find(BlocksOf("")[0]), std::string::npos) << told;
    for (const std::string stamp : {"SS=\"00000101\"", "SS=\"00000100\""}) EXPECT_TRUE(PageHas(stamp)) << stamp;
    EXPECT_NE(told.find("<Init SS=\"00000101\""), std::string::npos) << told;
    EXPECT_NE(told.find("<Inti SS=\"00000100\""), std::string::npos) << told;
}

/// What the program of the page writes, and its exit code, where this is its file; nothing gives it none.
struct Outcome {
    std::string output;
    int code;
};

Outcome RunProgram(const char* file) {
    const TempFolder temp;
    if (file != nullptr) temp.Write("today.xml", file);
    const std::string command = std::string("cd '").append(temp / "").append("' && '" KM_CONFIGURATION_PAGE "' 2>&1");
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    char part[4096];
    for (std::size_t n = 0; (n = std::fread(part, 1, sizeof part, pipe)) > 0;) output.append(part, n);
    const int status = pclose(pipe);
    return {output, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

TEST(ConfigurationPage, ShowsAProgramThatRuns) {
    const Outcome changed = RunProgram("<Settings><Smoothing><Rounds>5</Rounds></Smoothing></Settings>");
    EXPECT_EQ(changed.code, 0);
    EXPECT_EQ(changed.output.substr(0, 12), "5\n<Settings>");
    EXPECT_NE(changed.output.find("Help=\"How often each node moves.\" Type=\"Int32\">5</Rounds>"), std::string::npos);

    const Outcome unchanged = RunProgram(nullptr);
    EXPECT_EQ(unchanged.code, 0);
    EXPECT_EQ(unchanged.output.substr(0, 12), "3\n<Settings>");

    EXPECT_EQ(RunProgram("<Settings x>").code, 4);
}

}  // namespace
}  // namespace KM
