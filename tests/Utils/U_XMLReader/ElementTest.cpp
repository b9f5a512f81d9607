#include "Utils/U_XMLReader/Element.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

using Names = std::vector<std::string>;

Names ChildrenOf(const Element& element) {
    Names names;
    for (const Base* child : element.Children()) names.push_back(child->N());
    return names;
}

Element::ChildList::iterator ChildAt(Element& element, int place) {
    return std::next(element.Children().begin(), place);
}

TEST(Element, IsMadeOfNameValueAndParent) {
    Element root("root", "value", nullptr);
    const Element child("child", "", &root);
    EXPECT_EQ(child.P(), &root);
    EXPECT_TRUE(root.Children().empty()) << "a parent is a link only";
    EXPECT_TRUE(root.Attributes().empty());
}

TEST(ElementIndexOperator, MakesWhatItDoesNotFind) {
    Element root("root");
    Element& b = root["a.b"];
    EXPECT_EQ(b.N(), "b");
    EXPECT_EQ(b.V(), "");
    EXPECT_EQ(b.P(), &root["a"]);
    EXPECT_EQ(root["a"].P(), &root);
    EXPECT_EQ(ChildrenOf(root), Names{"a"});
    EXPECT_EQ(&root["a.b"], &b);
    EXPECT_EQ(&root["a . b"], &b) << "blanks are skipped";
    EXPECT_EQ(&root[" .a.b"], &b);
}

TEST(ElementIndexOperator, MakesOnAConstElementToo) {
    const Element root("root");
    Element& child = root["a"];
    EXPECT_EQ(child.P(), &root);
    EXPECT_EQ(&root["a"], &child);
    EXPECT_EQ(ChildrenOf(root), Names{"a"});
}

TEST(ElementIndexOperator, GoesThroughAnEmptyName) {
    Element root("root");
    root["a..b"];
    EXPECT_EQ(ChildrenOf(root["a"]), Names{""});
    EXPECT_EQ(ChildrenOf(root["a."]), Names{"b"});
}

TEST(ElementIndexOperator, WithoutPartsIsTheElementItself) {
    Element root("root");
    EXPECT_EQ(&root[""], &root);
    EXPECT_EQ(&root["   "], &root);
    EXPECT_TRUE(root.Children().empty());
}

TEST(ElementIndexOperator, TakesAnyText) {
    Element root("root");
    EXPECT_EQ(GetFullName(root["..."]), "root...");
    const std::string odd = std::string("<\"\0>", 4);
    EXPECT_EQ(root[odd].N(), odd);
    const std::string longName(100000, 'x');
    EXPECT_EQ(root[longName + "." + longName].N(), longName);
}

TEST(ElementToString, ReadsWithoutMaking) {
    Element root("root", "own");
    root["a.b"].V("value");
    const Element& tree = root;
    EXPECT_EQ(tree.ToString(), "own");
    EXPECT_EQ(tree.ToString(""), "own");
    EXPECT_EQ(tree.ToString(" "), "own");
    EXPECT_EQ(tree.ToString("a.b"), "value");
    EXPECT_EQ(tree.ToString("a"), "");
    EXPECT_EQ(tree.ToString("a.c"), "");
    EXPECT_EQ(tree.ToString("x.y.z"), "");
    EXPECT_EQ(tree.ToString("."), "");
    EXPECT_EQ(ChildrenOf(tree), Names{"a"});
    EXPECT_EQ(ChildrenOf(tree["a"]), Names{"b"});
}

TEST(ElementAdd, ReturnsTheCopy) {
    Element root("root");
    const Element child("x", "1");
    const Element& added = root += child;
    EXPECT_NE(&added, &child);
    EXPECT_EQ(&added, root.Children().back());
    EXPECT_EQ(added.P(), &root);
    EXPECT_EQ(&root["x"], &added);
}

TEST(ElementAdd, TwiceUnderOneNameKeepsBothAndFindsTheLater) {
    Element root("root");
    root += Element("x", "1");
    root += Element("x", "2");
    EXPECT_EQ(ChildrenOf(root), (Names{"x", "x"}));
    EXPECT_EQ(root.ToString("x"), "2");
}

TEST(ElementAdd, OfItselfAddsACopyOfWhatItWas) {
    Element root("root", "1");
    root["x"];
    root += root;
    EXPECT_EQ(ChildrenOf(root), (Names{"x", "root"}));
    EXPECT_EQ(ChildrenOf(root["root"]), Names{"x"});
}

TEST(ElementAdd, TakesAnAttributeAsItIs) {
    Element root("root");
    Element other("other");
    Attribute a("a", "1", &other);
    a.SettingSession(8);
    EXPECT_EQ(&(root += a), &root);
    const Attribute& kept = root.Attributes().at("a");
    EXPECT_EQ(kept.V(), "1");
    EXPECT_EQ(kept.P(), &other);
    EXPECT_EQ(kept.SettingSession(), 8);
}

TEST(ElementAdd, KeepsOneAttributePerNameInTheOrderOfNames) {
    Names names{"a", "b", "c"};
    do {
        Element root("root");
        for (const std::string& name : names) root += Attribute(name, "old");
        root += Attribute(names[0], "new");
        Names kept;
        for (const auto& [name, attribute] : root.Attributes()) {
            kept.push_back(name);
            EXPECT_EQ(attribute.V(), name == names[0] ? "new" : "old");
        }
        EXPECT_EQ(kept, (Names{"a", "b", "c"}));
    } while (std::next_permutation(names.begin(), names.end()));
}

TEST(ElementAdd, DoesNotIndexCommentsAndCDATA) {
    Element root("root");
    Element other("other");
    EXPECT_EQ(&(root += Comment("text", &other)), &root);
    EXPECT_EQ(&(root += CDATA("data")), &root);
    EXPECT_EQ(ChildrenOf(root), (Names{"!COMMENT!", "!CDATA!"}));
    EXPECT_EQ(root.Children().front()->P(), &other);
    EXPECT_EQ(root.Children().back()->P(), nullptr);
    EXPECT_EQ(root.ToString("!COMMENT!"), "");
}

TEST(ElementSetAttribute, IsAnAdditionWithoutTheCopy) {
    Element element("e");
    Element other("other");
    element += Attribute("b", "1", &other);
    element.Attributes().at("b").SettingSession(8);
    element.SetAttribute("a", "2");
    element.SetAttribute("b", "3");
    element.SetAttribute("c", "");
    ASSERT_EQ(element.Attributes().size(), 3u);
    EXPECT_EQ(element.AttributeValue("a"), "2");
    const Attribute& replaced = element.Attributes().at("b");
    EXPECT_EQ(replaced.N(), "b");
    EXPECT_EQ(replaced.V(), "3");
    EXPECT_EQ(replaced.P(), nullptr);
    EXPECT_EQ(replaced.SettingSession(), GetSettingSession()) << "a new one, not a changed one";
}

TEST(ElementNewChild, IsAnAdditionWithoutTheCopy) {
    Element root("root");
    Element& child = root.NewChild("x", "1");
    EXPECT_EQ(&root["x"], &child);
    EXPECT_EQ(child.P(), &root);
    EXPECT_NE(&root.NewChild("x"), &child);
    EXPECT_EQ(ChildrenOf(root), (Names{"x", "x"}));
}

TEST(ElementName, OfARootJustChanges) {
    Element root("root");
    root.N("other");
    EXPECT_EQ(root.N(), "other");
}

TEST(ElementName, OfAChildMovesItsIndexEntry) {
    Element root("root");
    Element& child = root["x"];
    child.N("y");
    EXPECT_EQ(&root["y"], &child);
    EXPECT_EQ(ChildrenOf(root), Names{"y"});
    child.N("y");
    EXPECT_EQ(&root["y"], &child);
    EXPECT_EQ(root.ToString("x"), "");
}

TEST(ElementName, HidesTheChildThatHadItBefore) {
    Element root("root");
    Element& x = root["x"];
    root["y"].V("hidden");
    x.N("y");
    EXPECT_EQ(&root["y"], &x);
    EXPECT_EQ(ChildrenOf(root), (Names{"y", "y"}));
}

TEST(ElementName, OfAShadowedChildTakesTheEntryOfTheLater) {
    Element root("root");
    Element& first = root["x"];
    root += Element("x", "later");
    first.N("y");
    EXPECT_EQ(&root["y"], &first);
    EXPECT_EQ(root.ToString("x"), "") << "the entry of the later child went with it";
}

TEST(ElementName, IsRefusedWhereTheParentHasNoSuchEntry) {
    Element root("root");
    Element stranger("x", "", &root);
    EXPECT_THROW(stranger.N("y"), Element::XNotRegisteredInParrent);
    EXPECT_EQ(stranger.N(), "x");
}

TEST(ElementName, OfAStrangerTakesTheEntryOfTheChild) {
    Element root("root");
    Element& child = root["x"];
    {
        Element stranger("x", "", &root);
        stranger.N("y");
        EXPECT_EQ(stranger.N(), "y");
        EXPECT_EQ(&root["y"], &stranger);
        EXPECT_EQ(root.ToString("x"), "");
        EXPECT_EQ(ChildrenOf(root), Names{"x"});
        stranger.N("z");
        EXPECT_EQ(&root["z"], &stranger);
    }
    EXPECT_NE(&root["x"], &child) << "the entry of the child went with the name";
    EXPECT_EQ(root["z"].P(), &root) << "the index forgets a stranger that is no more";
    EXPECT_EQ(ChildrenOf(root), (Names{"x", "x", "z"}));
}

TEST(ElementName, OfACopiedChildIsRefused) {
    Element source("source");
    source["x"];
    source["y"];
    Element copy(source);
    auto* x = dynamic_cast<Element*>(copy.Children().front());
    EXPECT_THROW(x->N("z"), Element::XNotRegisteredInParrent) << "the index of a copy knows no children";
}

TEST(ElementEraseAttribute, ByName) {
    Element root("root");
    root += Attribute("a", "1");
    root += Attribute("b", "2");
    root.EraseAttribute("c");
    EXPECT_EQ(root.Attributes().size(), 2u);
    root.EraseAttribute(root.Attributes().begin()->second.N());
    EXPECT_EQ(root.Attributes().size(), 1u);
    EXPECT_EQ(root.Attributes().begin()->first, "b");
}

TEST(ElementEraseAttribute, ByIteratorMovesItOn) {
    Element root("root");
    root += Attribute("a", "1");
    root += Attribute("b", "2");
    auto it = root.Attributes().begin();
    root.EraseAttribute(it);
    EXPECT_EQ(it->first, "b");
    root.EraseAttribute(it);
    EXPECT_EQ(it, root.Attributes().end());
    root.EraseAttribute(it);
    EXPECT_TRUE(root.Attributes().empty());
}

TEST(ElementEraseElement, LooksInTheParentsIndexNotInItsOwn) {
    Element root("root");
    Element& middle = root["middle"];
    Element& namesake = root["x"];
    Element& erased = middle["x"];
    auto it = ChildAt(middle, 0);
    middle.EraseElement(it);
    EXPECT_EQ(it, middle.Children().end());
    EXPECT_TRUE(middle.Children().empty());
    EXPECT_EQ(&middle["x"], &erased) << "its own index still knows it";
    EXPECT_NE(&root["x"], &namesake) << "the parent's index lost its namesake";
    EXPECT_EQ(ChildrenOf(root), (Names{"middle", "x", "x"}));
}

TEST(ElementEraseElement, OfARootLeavesTheIndex) {
    Element root("root");
    Element& x = root["x"];
    root["y"];
    auto it = ChildAt(root, 0);
    root.EraseElement(it);
    EXPECT_EQ((*it)->N(), "y");
    EXPECT_EQ(ChildrenOf(root), Names{"y"});
    EXPECT_EQ(&root["x"], &x);
    auto end = root.Children().end();
    root.EraseElement(end);
    EXPECT_EQ(ChildrenOf(root), Names{"y"});
}

TEST(ElementEraseElements, TakesOutEachChildOfThatName) {
    Element root("root");
    Element& middle = root["middle"];
    for (const char* name : {"x", "y", "x", "xx", "x"}) middle += Element(name);
    middle += Comment("x", "text", nullptr);
    root["x"].V("namesake");
    middle.EraseElements("x");
    EXPECT_EQ(ChildrenOf(middle), (Names{"y", "xx"}));
    EXPECT_EQ(root.ToString("x"), "") << "the parent's index lost its namesake";
    middle.EraseElements("none");
    EXPECT_EQ(ChildrenOf(middle), (Names{"y", "xx"}));
}

TEST(ElementEraseElements, TakesTheNameOutOfAChildItself) {
    Element root("root");
    root += Element("x");
    root += Element("x");
    root.EraseElements(root.Children().front()->N());
    EXPECT_TRUE(root.Children().empty());
}

TEST(ElementClear, KeepsNameAndValueAndDestroysNoChild) {
    Element root("root", "value");
    Element& child = root["x"];
    root += Attribute("a", "1");
    root.clear();
    EXPECT_EQ(root.N(), "root");
    EXPECT_EQ(root.V(), "value");
    EXPECT_TRUE(root.Children().empty());
    EXPECT_TRUE(root.Attributes().empty());
    EXPECT_EQ(child.N(), "x");
    EXPECT_NE(&root["x"], &child);
}

TEST(ElementAttributeValue, OfNoAttributeIsEmpty) {
    Element root("root");
    root += Attribute("a", "1");
    EXPECT_EQ(root.AttributeValue("a"), "1");
    EXPECT_EQ(root.AttributeValue("b"), "");
}

// Against a plain map, over few and many children, while names come, change and go.
TEST(ElementIndex, FindsTheLastUnderEachName) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        const unsigned variety = 1u << random() % 10;
        const auto anyName = [&] { return std::to_string(random() % variety); };
        Element root("root");
        Element& middle = root["middle"];
        std::map<std::string, Element*> plain{{"middle", &middle}};
        for (int step = 0; step < 400; ++step) {
            const std::string name = anyName();
            const unsigned action = random() % 8;
            if (action < 5) {
                plain[name] = &root.NewChild(name);
            } else if (action == 5 && plain.contains(name)) {
                Element* element = plain[name];
                const std::string newName = anyName().append(random() % 2 == 0 ? "" : "new");
                element->N(newName);
                plain.erase(name);
                plain[newName] = element;
            } else if (action == 6) {
                middle += Element(name);
                middle.EraseElements(name);  // which takes the name out of the root's index
                plain.erase(name);
            }
            EXPECT_EQ(root.ToInt(name), 1);
        }
        for (const auto& [name, element] : plain) EXPECT_EQ(&root[name], element) << name;
        const std::size_t children = root.Children().size();
        root["none"];
        EXPECT_EQ(root.Children().size(), children + 1);
    }
}

TEST(ElementIndex, OfManyNamesThatComeAndGoKeepsTheRest) {
    Element root("root");
    Element& kept = root["kept"];
    Element& renamed = root["renamed"];
    for (int i = 0; i < 20000; ++i) renamed.N(std::to_string(i));
    EXPECT_EQ(&root["kept"], &kept);
    EXPECT_EQ(&root["19999"], &renamed);
    EXPECT_EQ(root.Children().size(), 2u);
}

TEST(GetFullName, JoinsTheNamesFromTheRootDown) {
    Element root("root");
    EXPECT_EQ(GetFullName(root), "root");
    EXPECT_EQ(GetFullName(root["a.b"]), "root.a.b");
    EXPECT_EQ(GetFullName(root["a..b"]), "root.a..b");
    EXPECT_EQ(GetFullName(Element("")), "");
}

TEST(GetFullName, OfACircleIsEmpty) {
    for (int length = 1; length < 10; ++length) {
        std::vector<Element> circle(static_cast<std::size_t>(length), Element("e"));
        for (std::size_t i = 0; i < circle.size(); ++i)
            static_cast<Base&>(circle[i]) = Attribute("e", "", &circle[(i + 1) % circle.size()]);
        EXPECT_EQ(GetFullName(circle[0]), "") << length;
        EXPECT_EQ(GetFullName(Element("tail", "", &circle[0])), "") << length;
    }
}

}  // namespace
}  // namespace KM::XML
