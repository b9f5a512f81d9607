#include "Utils/U_XMLReader/Parser.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Support/LogCapture.h"
#include "Utils/U_XMLReader/EventJournal.h"
#include "Utils/U_XMLReader/PlainXmlReader.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::XML {
namespace {

using Test::EventJournal;
using Test::LogCapture;
using Test::PlainXmlReader;
using Verbose::EMessageType;

/// The events of a reading, and behind them the refusal: the message that was logged, or the text of the exception.
std::pair<std::string, std::string> Outcome(const std::string& text, bool translate = true) {
    EventJournal journal;
    LogCapture log;
    try {
        ReadFromString(text, journal, translate);
    } catch (const char* refusal) {
        EXPECT_STREQ(refusal, "Bad XML File");
        EXPECT_EQ(log.Count(EMessageType::Error), 1);
        return {journal.journal, log.Texts(EMessageType::Error).back()};
    } catch (const std::length_error& refusal) { return {journal.journal, refusal.what()}; }
    EXPECT_EQ(log.Count(EMessageType::Error), 0);
    return {journal.journal, ""};
}

std::string Events(const std::string& text, bool translate = true) {
    const auto [events, refusal] = Outcome(text, translate);
    EXPECT_EQ(refusal, "") << text;
    return events;
}

std::string Refusal(const std::string& text) { return Outcome(text).second; }

std::string NoEqualSign(const std::string& name, int line = 0) {
    return "Expected an equal sign while parsing attributes after" + name + ", InLine: " + std::to_string(line) +
           ". Execution Aborted";
}

std::string NotClosed(const std::string& name, int line = 0) {
    return "Wasn't found a proper closing element (>):" + name + ", InLine: " + std::to_string(line) +
           ". Execution Aborted";
}

TEST(Parser, EmptyAndBlankTextsAreSilent) {
    EXPECT_EQ(Events(""), "");
    EXPECT_EQ(Events(std::string("\0 \t\r\n\0", 6)), "");
}

TEST(Parser, TellsElementsAndAttributes) {
    EXPECT_EQ(Events("<a b=\"1\" c='2'/>"), "<a b=1;c=2;/");
    EXPECT_EQ(Events("<a></a>"), "<a \\");
    EXPECT_EQ(Events("<a><b/></a><c/>"), "<a <b /\\<c /");
    EXPECT_EQ(Events("<a-_9Z/>"), "<a-_9Z /");
    EXPECT_EQ(Events(" <a\n b\t=\r\n \"1\"  >\n</a \n>"), "<a b=1;\\");
    EXPECT_EQ(Events("<a b=\"\" b=\"2\"/>"), "<a b=;b=2;/");
    EXPECT_EQ(Events("<a =\"1\"/>"), "<a =1;/") << "an attribute needs no name";
    EXPECT_EQ(Events("< a=\"1\"/>"), "< a=1;/") << "a name stands right behind its bracket";
    EXPECT_EQ(Events("<a b='1\"2' c=\"3'4\"/>"), "<a b=1\"2;c=3'4;/");
    EXPECT_EQ(Events("<a b=\"1\"c=\"2\"/>"), "<a b=1;c=2;/");
    EXPECT_EQ(Events("<a b=\" <>/\n\r\"/>"), "<a b= <>/\n\r;/") << "quotes keep all";
}

TEST(Parser, DoesNotMatchTags) {
    EXPECT_EQ(Events("<a></b>"), "<a \\");
    EXPECT_EQ(Events("</b></>"), "\\\\");
    EXPECT_EQ(Events("<>"), "< ");
}

TEST(Parser, TellsTexts) {
    EXPECT_EQ(Events("<a>two\nlines</a>"), "<a \"twolines\"\\");
    EXPECT_EQ(Events("<a> \r\n b  c\r\n d \t</a>"), "<a \"b  c d\"\\");
    EXPECT_EQ(Events(std::string("<a>b\0c\0</a>", 11)), "<a \"" + std::string("b\0c", 3) + "\"\\");
    EXPECT_EQ(Events("<a>b\v</a>"), "<a \"b\v\"\\") << "a vertical tab is no blank";
    EXPECT_EQ(Events("a<b>c</b>d"), "\"a\"<b \"c\"\\\"d\"");
    EXPECT_EQ(Events("<a>b> / = c</a>"), "<a \"b> / = c\"\\");
}

TEST(Parser, KeepsTheQuotesOfATextAndDropsTheNextCharacter) {
    EXPECT_EQ(Events("<a>\"x\"</a>"), "<a \"\"x\"\"\\");
    EXPECT_EQ(Events("<a>'x \"y\n'</a>"), "<a \"\"x \"y\n\"\"\\");
    EXPECT_EQ(Events("<a>\"x\" \n yz</a>"), "<a \"\"x\"\"\"z\"\\");
    EXPECT_EQ(Events("<a>\"x\"y</a>"), "<a \"\"x\"\"\\");
    EXPECT_EQ(Events("<a>\"x\"\"y\"</a>"), "<a \"\"x\"\"\"y\"\"\\");
}

TEST(Parser, DecodesTheFiveEntities) {
    EXPECT_EQ(Events("<a>text &amp; more</a>"), "<a \"text & more\"\\");
    EXPECT_EQ(Events("<a>text &amp; more</a>", false), "<a \"text &amp; more\"\\");
    EXPECT_EQ(Events("<a b='&lt;&gt;&amp;&apos;&quot;'/>"), "<a b=<>&'\";/");
    EXPECT_EQ(Events("<a b='&lt;&quot;'/>", false), "<a b=&lt;&quot;;/");
    EXPECT_EQ(Events("<!--&lt;--><?&lt;?><![CDATA[&lt;]]>"), "!&lt;!?&lt;?[&lt;]") << "texts only";
    EXPECT_EQ(Events("&quot;a&quot;"), "\"\"a\"\"") << "no quotes when the value is read";
}

TEST(Parser, TellsWhatStandsBetweenElements) {
    EXPECT_EQ(Events("<!-- a -- b --><?c d?><![CDATA[ <e>]] ]]>"), "! a -- b !?c d?[ <e>]] ]");
    EXPECT_EQ(Events("<!----><?"
                     "?><![CDATA[]]>"),
              "!!??[]");
    EXPECT_EQ(Events("<!--a\nb-->"), "!a\nb!");
    EXPECT_EQ(Events("<![CDATA [x]]>"), "!DATA [x!") << "no such section, so a declaration";
}

TEST(Parser, CutsADeclarationAsAComment) {
    EXPECT_EQ(Events("<!DOCTYPE x>"), "!CTYPE!");
    EXPECT_EQ(Events("<!abcd>"), "!!");
    EXPECT_EQ(Events("<!abcde>"), "!c!");
}

TEST(Parser, RefusesWhatIsTooShortToBeCut) {
    for (const char* text : {"<!>", "<!a>", "<!ab>", "<!abc>", "<!->", "<!-->", "<!--->", "<?>"})
        EXPECT_EQ(Refusal(text), "string too long") << text;
}

TEST(Parser, RefusesAnAttributeWithoutEqualSign) {
    EXPECT_EQ(Refusal("<a x></a>"), NoEqualSign("x"));
    EXPECT_EQ(Refusal("<a.b/>"), NoEqualSign(""));
    EXPECT_EQ(Refusal("<a:b/>"), NoEqualSign(""));
    EXPECT_EQ(Refusal("<a b=\"1\" x y/>"), NoEqualSign("x"));
    EXPECT_EQ(Refusal("<a b=\"1\"\"2\"/>"), NoEqualSign(""));
    EXPECT_EQ(Refusal("<a \xC3\xA4='1'/>"), NoEqualSign(""));
    EXPECT_EQ(Outcome("<a b=\"1\" x>").first, "<a b=1;") << "what came before has been told";
}

TEST(Parser, AnAttributeWithoutQuotesRunsToTheNextTag) {
    EXPECT_EQ(Outcome("<a b=123></a>"), std::pair(std::string("<a b=23;"), NoEqualSign("")));
    EXPECT_EQ(Outcome("<a b=<c>"), std::pair(std::string("<a b=;"), NoEqualSign("")));
    EXPECT_EQ(Outcome("<a b=\n1\n2 \n<c>"), std::pair(std::string("<a b=;"), NoEqualSign("", 3)));
    EXPECT_EQ(Events("<a b=1 &gt; 2"), "<a b= > ;");
}

TEST(Parser, RefusesATagThatIsNotClosed) {
    EXPECT_EQ(Refusal("<a></a b>"), NotClosed("a"));
    EXPECT_EQ(Refusal("</a<b>"), NotClosed("a"));
    EXPECT_EQ(Refusal("<a / >"), NotClosed("a"));
    EXPECT_EQ(Refusal("<a b='1'/x>"), NotClosed("a"));
    EXPECT_EQ(Refusal("<//>"), NotClosed(""));
}

TEST(Parser, CountsLines) {
    EXPECT_EQ(Refusal("\n\r\n<a>\n</a\n b>"), NotClosed("a", 4));
    EXPECT_EQ(Refusal("<!--\n--><?\n?><![CDATA[\n]]>text\n text\n<!DOC\nTYPE><a x>"), NoEqualSign("x", 6));
    EXPECT_EQ(Refusal("<a b='\n\n'\n x>"), NoEqualSign("x", 1)) << "lines in quotes do not count";
    EXPECT_EQ(Refusal("'\n\n'\n<a x>"), NoEqualSign("x", 1));
}

TEST(Parser, ATextMayEndAnywhere) {
    EXPECT_EQ(Events("<"), "< ");
    EXPECT_EQ(Events("</"), "\\");
    EXPECT_EQ(Events("</a "), "\\");
    EXPECT_EQ(Events("<a /"), "<a /");
    EXPECT_EQ(Events("<a b"), "<a ");
    EXPECT_EQ(Events("<a b="), "<a b=;");
    EXPECT_EQ(Events("<a b='"), "<a b=;");
    EXPECT_EQ(Events("<a b='c"), "<a b=c;");
    EXPECT_EQ(Events("<a b='c' "), "<a b=c;");
    EXPECT_EQ(Events("<a>b"), "<a \"b\"");
    EXPECT_EQ(Events("<a>\"b"), "<a \"\"b\"\"");
    EXPECT_EQ(Events("<a>\"b\""), "<a \"\"b\"\"");
    EXPECT_EQ(Events("<!-- abcd"), "! a!") << "loses three characters as if it had an end";
    EXPECT_EQ(Events("<?abcd"), "?ab?");
    EXPECT_EQ(Events("<![CDATA[abcd"), "[a]");
    EXPECT_EQ(Events("<!"), "!!");
    EXPECT_EQ(Events("<!--ab"), "!!");
    EXPECT_EQ(Events("<?"), "??");
    EXPECT_EQ(Events("<![CDATA["), "[]");
}

const std::string Sound =
    "<?xml version=\"1.0\"?>\n<!DOCTYPE Settings><!-- a comment\nof two lines -->\n<Settings a=\"1\" b = "
    "'&lt;&quot;'>\n"
    "  text &amp; more\n  <Console Type=\"Int32\">b0111</Console><Empty/>\n  <![CDATA[ <raw> ]]>\n <Q>\"quoted\" </Q>\n"
    "</Settings>\n<!-- behind -->";

TEST(Parser, NoTruncationIsAnError) {
    for (std::size_t size = 0; size <= Sound.size(); ++size)
        for (const bool translate : {false, true}) {
            const std::string text = Sound.substr(0, size);
            SCOPED_TRACE(text);
            EXPECT_EQ(Outcome(text, translate), PlainXmlReader::Read(text, translate));
            EXPECT_EQ(Outcome(text, translate).second, "");
        }
}

TEST(Parser, NoTailLeavesThePlainRules) {
    for (std::size_t from = 0; from <= Sound.size(); ++from) {
        const std::string text = Sound.substr(from);
        SCOPED_TRACE(text);
        EXPECT_EQ(Outcome(text), PlainXmlReader::Read(text, true));
    }
}

std::string RandomText(std::mt19937& random) {
    static const std::vector<std::string> pieces = {"<",     ">",      "/",     "</",   "/>",
                                                    "<a",    "<b>",    "</a>",  "=",    "\"",
                                                    "'",     " ",      "\n",    "\r",   std::string(1, '\0'),
                                                    "x",     "y1",     ".",     "&",    "&lt;",
                                                    "&amp;", "&quot;", ";",     "<!--", "-->",
                                                    "--",    "<!",     "<?",    "?>",   "<![CDATA[",
                                                    "]]>",   "\xFF",   " c='1'"};
    std::string text;
    for (auto count = random() % 24; count > 0; --count) text += pieces[random() % pieces.size()];
    return text;
}

TEST(Parser, FollowsThePlainRules) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        std::mt19937 random(seed);
        const std::string text = RandomText(random);
        const bool translate = seed % 2 == 0;
        ASSERT_EQ(Outcome(text, translate), PlainXmlReader::Read(text, translate)) << "seed " << seed << ": " << text;
    }
}

TEST(Parser, StartsAfreshBehindARefusalAndAnOpenQuote) {
    EXPECT_EQ(Refusal("<a b=\"1\" 'x"), NoEqualSign(""));
    EXPECT_EQ(Events("<a b='1\" c=\"2\"'>d</a>"), "<a b=1\" c=\"2\";\"d\"\\");
    EXPECT_EQ(Events("<a b='1"), "<a b=1;");
    EXPECT_EQ(Events("<a b=\"1' c='2\">d</a>"), "<a b=1' c='2;\"d\"\\");
}

TEST(Parser, TimeGrowsWithTheTextAlone) {
    // Each of these would take hours if a search were made again and again over the rest.
    const int count = 500000;
    for (const char* piece :
         {"<a>", "</a>", "<a b='", "x<", "'", "<!-- -", "<? ?", "<![CDATA[ ]", "-", "&", "\n", "<a b='1'/>"}) {
        std::string text;
        for (int i = 0; i < count; ++i) text += piece;
        LogCapture log;
        Processor deaf;
        try {
            ReadFromString(text, deaf, true);
        } catch (const char*) { EXPECT_EQ(log.Count(EMessageType::Error), 1); }
    }
}

TEST(Parser, AnEventThatThrowsEndsTheReading) {
    struct Thrower : EventJournal {
        void OnValue(const std::string&) override { throw 7; }
    } thrower;
    EXPECT_THROW(ReadFromString("<a>b</a><c/>", thrower, true), int);
    EXPECT_EQ(thrower.journal, "<a ");
}

}  // namespace
}  // namespace KM::XML
