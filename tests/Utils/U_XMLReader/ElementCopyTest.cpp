#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "Utils/U_XMLReader/Element.h"

// Copies of elements, of deep trees, and of trees into themselves.

namespace KM::XML {
namespace {

constexpr int Depth = 100'000;

// "name=value<stamp>{attributes}(children)"
std::string TextOf(const Base& node) {
    std::string text = node.N() + "=" + node.V() + "<" + std::to_string(node.SettingSession()) + ">";
    const auto* element = dynamic_cast<const Element*>(&node);
    if (element == nullptr) return text;
    text += "{";
    for (const auto& [name, attribute] : element->Attributes()) text += name + "=" + attribute.V() + ";";
    text += "}(";
    for (const Base* child : element->Children()) text += TextOf(*child);
    return text + ")";
}

Element* ChildOf(const Element& element, int place) {
    return dynamic_cast<Element*>(*std::next(element.Children().begin(), place));
}

Element Sample() {
    Element root("root", "value");
    root["x"].V("1");
    root["y.z"].V("2");
    root += Comment("text");
    root += Attribute("a", "3");
    return root;
}

TEST(ElementCopy, IsDeep) {
    Element root("root", "value");
    root["x"].V("1");
    root["y.z"].V("2");
    root += Attribute("a", "3");
    root["y"].SettingSession(12);
    const Element copy(root);
    EXPECT_EQ(TextOf(copy), TextOf(root));
    EXPECT_NE(ChildOf(copy, 0), ChildOf(root, 0));
    EXPECT_EQ(copy.P(), nullptr);
    EXPECT_EQ(ChildOf(copy, 1)->P(), &copy);
    EXPECT_EQ(ChildOf(*ChildOf(copy, 1), 0)->P(), ChildOf(copy, 1));
    const std::unique_ptr<Base> clone(root.Clone());
    EXPECT_EQ(TextOf(*clone), TextOf(root));
}

TEST(ElementCopy, IndexKnowsOnlyItsOwnNameAndPointsAtTheLastChild) {
    Element root("root");
    root["x"].V("1");
    root["y"].V("2");
    Element copy(root);
    EXPECT_EQ(copy.ToString("x"), "");
    EXPECT_EQ(copy.ToString("y"), "");
    EXPECT_EQ(copy.ToString("root"), "2");
    EXPECT_EQ(&copy["root"], ChildOf(copy, 1));
}

TEST(ElementCopy, MakesANewChildBesideTheCopiedOne) {
    Element root("root");
    root["x"].V("1");
    Element copy(root);
    copy["x"].V("new");
    EXPECT_EQ(copy.Children().size(), 2u);
    EXPECT_EQ(ChildOf(copy, 0)->V(), "1");
    EXPECT_EQ(copy.ToString("x"), "new");
}

TEST(ElementCopy, ByAdditionHasTheSameIndex) {
    Element root("root");
    Element part("part");
    part["x"].V("1");
    const Element& added = root += part;
    EXPECT_EQ(added.ToString("x"), "");
    EXPECT_EQ(root.ToString("part.part"), "1");
}

TEST(ElementCopy, IndexOfEachLevelKnowsItsOwnName) {
    Element root("root");
    root["a.b.c"].V("1");
    const Element copy(root);
    EXPECT_EQ(copy.ToString("a.b.c"), "");
    EXPECT_EQ(&copy["root.a.b"], ChildOf(*ChildOf(*ChildOf(copy, 0), 0), 0));
}

TEST(ElementCopy, IndexSkipsACommentAtTheEnd) {
    const Element root = Sample();
    const Element copy(root);
    EXPECT_EQ(&copy["root"], ChildOf(copy, 1));
}

TEST(ElementCopy, OfACommentKeepsItsParent) {
    Element other("other");
    Element root("root");
    root += Comment("text", &other);
    const Element copy(root);
    EXPECT_EQ(copy.Children().front()->P(), &other);
}

TEST(ElementAssign, TakesNameStampAttributesAndChildren) {
    Element target("target", "old");
    target["gone"];
    target += Attribute("gone", "1");
    Element source = Sample();
    source.SettingSession(6);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(TextOf(target), TextOf(source));
}

TEST(ElementAssign, EmptyValueLeavesTheOldOne) {
    Element target("target", "old");
    target = Element("source");
    EXPECT_EQ(target.N(), "source");
    EXPECT_EQ(target.V(), "old");
}

TEST(ElementAssign, FromARootMakesARoot) {
    Element root("root");
    Element& child = root["x"];
    child = Element("y");
    EXPECT_EQ(child.P(), nullptr);
}

TEST(ElementAssign, FromAChildKeepsTheOwnParent) {
    Element root("root");
    Element other("other");
    Element& child = root["x"];
    child = other["y"];
    EXPECT_EQ(child.P(), &root);
    Element target("target");
    target = other["y"];
    EXPECT_EQ(target.P(), nullptr);
}

TEST(ElementAssign, LeavesTheParentsIndexUnderTheOldName) {
    Element root("root");
    Element other("other");
    Element& child = root["x"];
    child = other["y"];
    EXPECT_EQ(&root["x"], &child);
    EXPECT_EQ(child.N(), "y");
    EXPECT_THROW(child.N("z"), Element::XNotRegisteredInParrent);
}

TEST(ElementAssign, ToItselfLosesItsChildrenAndNothingElse) {
    Element root("root", "value");
    root["x"];
    root += Attribute("a", "1");
    Element& same = root;
    root = same;
    EXPECT_EQ(TextOf(root), "root=value<1>{a=1;}()");
    EXPECT_NE(&root["x"], nullptr);
}

TEST(ElementAssign, FromItsOwnChild) {
    Element root("root");
    root["child.grandchild"].V("1");
    root["child"].V("2");
    root["sibling"];
    root = root["child"];
    EXPECT_EQ(TextOf(root), "child=2<1>{}(grandchild=1<1>{}())");
    EXPECT_EQ(root.P(), nullptr);
}

TEST(ElementAssign, FromDeepBelow) {
    Element root("root");
    root["a.b.c.d"].V("1");
    root = root["a.b.c"];
    EXPECT_EQ(TextOf(root), "c=<1>{}(d=1<1>{}())");
}

TEST(ElementAssign, ToItsOwnChildCopiesItAsItHasGrown) {
    Element root("root", "value");
    root["before"].V("1");
    root["child.gone"];
    root["after"].V("2");
    root["child"] = root;
    const std::string before = "before=1<1>{}()";
    const std::string after = "after=2<1>{}()";
    const std::string grown = "root=value<1>{}(" + before + ")";
    EXPECT_EQ(TextOf(root),
              "root=value<1>{}(" + before + "root=value<1>{}(" + before + grown + after + ")" + after + ")");
    EXPECT_EQ(ChildOf(root, 1)->P(), nullptr) << "the source was a root";
}

TEST(ElementAssign, ToItsOwnChildAgainAndAgainStaysFinite) {
    Element root("root");
    root["child"];
    for (int i = 0; i < 10; ++i) root["child"] = root;
    EXPECT_EQ(root.Children().size(), 1u);
}

// A value-taking class of a user: what his clone is, a copy of the tree must be.
class Marked : public Element {
public:
    using Element::Element;
    Marked* Clone() const override { return new Marked("marked"); }
};

TEST(ElementCopy, AsksAUsersClassForItsClone) {
    Element root("root");
    root["x"].Children().push_back(new Marked("user"));
    const Element copy(root);
    const auto* marked = dynamic_cast<const Marked*>(ChildOf(*ChildOf(copy, 0), 0));
    ASSERT_NE(marked, nullptr);
    EXPECT_EQ(marked->N(), "marked");
    EXPECT_EQ(marked->P(), ChildOf(copy, 0));
}

TEST(ElementCopy, OfRandomTreesIsTheSameText) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        std::mt19937 random(seed);
        Element root("root");
        for (int i = 0; i < 60; ++i) {
            std::string path;
            for (auto parts = random() % 4; parts > 0; --parts) path += std::string(1, "abc"[random() % 3]) + ".";
            Element& element = root[path + "d"];
            if (random() % 2 == 0) element.V(std::to_string(i));
            if (random() % 3 == 0) element += Attribute(std::to_string(i), "v");
            if (random() % 5 == 0) element += CDATA("data");
            if (random() % 5 == 0) element += Element("a", "shadow");
        }
        EXPECT_EQ(TextOf(Element(root)), TextOf(root)) << "seed " << seed;
        Element target("target");
        target["x.y"];
        target = root;
        EXPECT_EQ(TextOf(target), TextOf(root)) << "seed " << seed;
    }
}

std::string DeepPath() {
    std::string path;
    for (int i = 0; i < Depth; ++i) path += "a.";
    return path + "end";
}

int DepthOf(const Element& element) {
    int depth = 0;
    for (const Element* at = &element; !at->Children().empty(); at = ChildOf(*at, 0)) ++depth;
    return depth;
}

TEST(DeepTree, IsMadeSearchedNamedAndDestroyed) {
    const std::string path = DeepPath();
    Element root("a");
    root[path].V("1");
    EXPECT_EQ(DepthOf(root), Depth + 1);
    EXPECT_EQ(root.ToString(path), "1");
    EXPECT_EQ(root.ToString(path + ".x"), "");
    EXPECT_EQ(GetFullName(root[path]), "a." + path);
}

TEST(DeepTree, IsCopiedClonedAddedAndAssigned) {
    Element root("a");
    root[DeepPath()];
    Element copy(root);
    EXPECT_EQ(DepthOf(copy), Depth + 1);
    const std::unique_ptr<Element> clone(root.Clone());
    EXPECT_EQ(DepthOf(*clone), Depth + 1);
    copy = *clone;
    EXPECT_EQ(DepthOf(copy), Depth + 1);
    EXPECT_EQ(DepthOf(root += copy), Depth + 1);
    copy = Element("flat");
    EXPECT_TRUE(copy.Children().empty());
}

TEST(DeepTree, IsAssignedFromItsOwnDepth) {
    Element root("a");
    root[DeepPath()];
    root = root["a.a.a"];
    EXPECT_EQ(DepthOf(root), Depth - 2);
    root["a"] = root;
    EXPECT_EQ(DepthOf(root), 2);
}

TEST(DeepTree, OfDotsOnly) {
    Element root("root");
    root[std::string(Depth, '.')].V("1");
    EXPECT_EQ(root.ToString(std::string(Depth, '.')), "1");
    EXPECT_EQ(DepthOf(root), Depth);
}

}  // namespace
}  // namespace KM::XML
