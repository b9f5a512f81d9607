#include "Utils/U_XMLReader/CreateElementProcessor.h"

#include <gtest/gtest.h>

#include <string>

#include "Support/InChild.h"
#include "Utils/U_XMLReader/Dump.h"
#include "Utils/U_XMLReader/EventJournal.h"
#include "Utils/U_XMLReader/Reader.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

using Test::EventJournal;
using Test::InChild;

/// The whole tree in the short form of the journal.
std::string Picture(const Element& element) {
    EventJournal journal;
    Dump(element, journal, nullptr, nullptr);
    return journal.Take();
}

std::string ReadAnew(const std::string& text) {
    Element root("old");
    ReadElementFromString(text, root, false);
    return Picture(root);
}

std::string Merged(const std::string& text, Element& root) {
    ReadElementFromString(text, root, true);
    return Picture(root);
}

TEST(CreateElementProcessor, BuildsATree) {
    EXPECT_EQ(ReadAnew("<a b='1'>v<c d='2'/><e>w</e></a>"), "<a b=1;>\"v\"<c d=2;>/<e >\"w\"/\\");
    EXPECT_EQ(ReadAnew("<a><b/><b>1</b></a>"), "<a ><b >/<b >\"1\"/\\") << "one name, two children";
    EXPECT_EQ(ReadAnew(""), "<old >/");
    EXPECT_EQ(ReadAnew("text"), "<old >\"text\"/");
    EXPECT_EQ(ReadAnew("<a>1<b/>2</a>"), "<a >\"2\"<b >/\\") << "the last text is the value";
    EXPECT_EQ(ReadAnew("<a b='1' b='2'/>"), "<a b=2;>/");
}

TEST(CreateElementProcessor, TheRootRenamesTheTarget) {
    for (const bool merge : {false, true}) {
        Element root("old", "value");
        ReadElementFromString("<new/>", root, merge);
        EXPECT_EQ(root.N(), "new");
        EXPECT_EQ(root.V(), "value");
        EXPECT_TRUE(root.Children().empty());
    }
    Element tree("tree");
    Element& child = tree["child"];
    ReadElementFromString("<new>1</new>", child, true);
    EXPECT_EQ(tree.ToString("new"), "1");
}

TEST(CreateElementProcessor, TheIndexKnowsWhatWasRead) {
    Element root("");
    ReadElementFromString("<s><a><b>1</b></a></s>", root, false);
    EXPECT_EQ(root.ToString("a.b"), "1");
    EXPECT_EQ(root["a.b"].P(), &root["a"]);
    EXPECT_EQ(root["a"].P(), &root);
}

TEST(CreateElementProcessor, AttributesHaveNoParent) {
    Element root("");
    ReadElementFromString("<s a='1'/>", root, false);
    EXPECT_EQ(root.Attributes().at("a").P(), nullptr);
}

TEST(CreateElementProcessor, MergesIntoWhatStands) {
    Element root("s");
    Element& key = root["a.b"];
    key.V("old");
    key += Attribute("Help", "h");
    key += Attribute("Type", "t");
    EXPECT_EQ(Merged("<s><a><b Type='u'>new</b></a></s>", root), "<s ><a ><b Help=h;Type=u;>\"new\"/\\\\");
    EXPECT_EQ(&root["a.b"], &key);
    EXPECT_EQ(Merged("<s><a/><c>1</c><a/></s>", root), "<s ><a ><b Help=h;Type=u;>\"new\"/\\<c >\"1\"/\\");
    EXPECT_EQ(Merged("<s><a><b/></a></s>", root), "<s ><a ><b Help=h;Type=u;>\"new\"/\\<c >\"1\"/\\")
        << "no text is no value";
}

TEST(CreateElementProcessor, MergeGoesToTheLastOfOneName) {
    Element root("s");
    root.NewChild("a", "1");
    root.NewChild("a", "2");
    EXPECT_EQ(Merged("<s><a>3</a></s>", root), "<s ><a >\"1\"/<a >\"3\"/\\");
}

TEST(CreateElementProcessor, MergeOfANamelessTagIsTheElementItself) {
    Element root("s");
    EXPECT_EQ(Merged("<s><>1</></s>", root), "<s >\"1\"/");
    EXPECT_EQ(ReadAnew("<s><>1</></s>"), "<s >< >\"1\"/\\");
}

TEST(CreateElementProcessor, EndTagsTooManyClimb) {
    Element tree("tree");
    Element& child = tree["child"];
    ReadElementFromString("<child>1</child>2</x>3<new/>", child, true);
    EXPECT_EQ(Picture(tree), "<tree >\"3\"<child >\"1\"/<new >/\\");
    Element root("s");
    EXPECT_EQ(Merged("</></></><a></a></></>text", root), "<a >\"text\"/");
}

TEST(CreateElementProcessor, AnEndTagAheadOfTheRootLeavesTheRenamingToTheTarget) {
    Element tree("tree");
    ReadElementFromString("</x><new/>", tree["child"], true);
    EXPECT_EQ(tree.N(), "tree");
    EXPECT_EQ(tree.Children().front()->N(), "new");
}

TEST(CreateElementProcessor, KeepsWhatStandsBetweenElements) {
    EXPECT_EQ(ReadAnew("<!--0--><a><!--1--><![CDATA[2]]><?3?><b><!--4--></b></a><!--5-->"), "<a >!1![2]?3?<b >!4!\\\\");
    Element root("");
    ReadElementFromString("<a><!--1--></a>", root, false);
    EXPECT_EQ(root.ToString("!COMMENT!"), "1");
    EXPECT_EQ(root["!COMMENT!"].P(), &root);
}

TEST(CreateElementProcessor, BeforeAndAfterTakeTheirShare) {
    Element root("");
    Element before("before");
    Element after("after");
    CreateElementProcessor processor(root, false, &before, &after);
    ReadFromString("<?0?><!--1--><a><!--2--></a><![CDATA[3]]><!--4-->", processor, true);
    EXPECT_EQ(Picture(before), "<before >?0?!1!\\");
    EXPECT_EQ(Picture(root), "<a >!2!\\");
    EXPECT_EQ(Picture(after), "<after >[3]!4!\\");

    EventJournal journal;
    Dump(root, journal, &before, &after);
    EXPECT_EQ(journal.Take(), "?0?!1!<a >!2!\\[3]!4!");
}

TEST(CreateElementProcessor, OnlyOneOfBeforeAndAfterMayBeGiven) {
    Element root("");
    Element after("after");
    CreateElementProcessor processor(root, false, nullptr, &after);
    ReadFromString("<!--1--><a/><!--2-->", processor, true);
    EXPECT_EQ(Picture(after), "<after >!2!\\");
    EXPECT_EQ(Picture(root), "<a >/");
}

TEST(CreateElementProcessor, AnAfterBelowTheDepthOfZeroIsCurrent) {
    Element root("");
    ReadElementFromString("<a/></x><!--1-->", root, false);
    EXPECT_EQ(Picture(root), "<a >!1!\\") << "the depth is -1, not 0";
}

TEST(CreateElementProcessor, StampsWhatItMakesAndChanges) {
    EXPECT_EQ(InChild([] {
                  Element root("s");
                  root["kept"].V("1");
                  root["changed"].V("1");
                  IncrementSettingSession("next");
                  ReadElementFromString("<s><kept>1</kept><changed a='1'>2</changed><made/></s>", root, true);
                  const auto stamp = [](const Base& node) { return std::to_string(node.SettingSession()); };
                  return stamp(root) + stamp(root["kept"]) + stamp(root["changed"]) + stamp(root["made"]) +
                         stamp(root["changed"].Attributes().at("a"));
              }),
              "11322");
}

TEST(CreateElementProcessor, ReadsATextThatItChanges) {
    Element root("s", "<s><a>a text longer than any that fits into the string itself</a>end</s>");
    ReadElementFromString(root.V(), root, true);
    EXPECT_EQ(root.V(), "end");
    EXPECT_EQ(root.ToString("a"), "a text longer than any that fits into the string itself");
}

TEST(CreateElementProcessor, GoesAsDeepAsTheText) {
    constexpr int depth = 100000;
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<a>";
    text += "1";
    for (int i = 0; i < depth; ++i) text += "</a>";
    Element root("");
    ReadElementFromString(text, root, true);
    int levels = 1;
    const Element* at = &root;
    for (; !at->Children().empty(); ++levels) at = static_cast<const Element*>(at->Children().front());
    EXPECT_EQ(levels, depth);
    EXPECT_EQ(at->V(), "1");
}

}  // namespace
}  // namespace KM::XML
