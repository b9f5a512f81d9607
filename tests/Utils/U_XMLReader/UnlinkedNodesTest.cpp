#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Utils/U_XMLReader/Element.h"

// Children that were erased but not destroyed, and stay usable whatever becomes of their tree.

namespace KM::XML {
namespace {

Element& EraseFirst(Element& element) {
    auto* child = dynamic_cast<Element*>(element.Children().front());
    auto it = element.Children().begin();
    element.EraseElement(it);
    return *child;
}

TEST(UnlinkedNodes, KeepTheirSubtreeAndParent) {
    Element root("root");
    root["x.y"].V("1");
    const Element& x = EraseFirst(root);
    EXPECT_EQ(x.ToString("y"), "1");
    EXPECT_EQ(x.P(), &root);
    EXPECT_EQ(GetFullName(x), "root.x");
}

TEST(UnlinkedNodes, BecomeRootsWhenTheirElementDies) {
    auto root = std::make_unique<Element>("root");
    (*root)["x"];
    (*root)["y"];
    Element& x = EraseFirst(*root);
    auto* y = dynamic_cast<Element*>(root->Children().front());
    root->clear();
    root.reset();
    EXPECT_EQ(x.P(), nullptr);
    EXPECT_EQ(GetFullName(*y), "y");
    x.N("z");
    EXPECT_EQ(x.N(), "z");
}

TEST(UnlinkedNodes, MayBeDeletedByTheirHolder) {
    Element root("root");
    root["x"].V("old");
    delete &EraseFirst(root);
    EXPECT_EQ(root.ToString("x"), "") << "the index forgets what is no more";
    root["x"].V("new");
    EXPECT_EQ(root.ToString("x"), "new");
}

TEST(UnlinkedNodes, MayBeDeletedAfterTheirElement) {
    auto root = std::make_unique<Element>("root");
    (*root)["x"];
    *root += Comment("text", root.get());
    Element& x = EraseFirst(*root);
    const Base* comment = root->Children().front();
    root->clear();
    root.reset();
    delete &x;
    EXPECT_EQ(comment->P(), nullptr);
    delete comment;
}

TEST(UnlinkedNodes, MayBeLinkedAgain) {
    Element root("root");
    root["x"];
    Element& x = EraseFirst(root);
    root.Children().push_back(&x);
    EXPECT_EQ(root.Children().size(), 1u);
}

TEST(UnlinkedNodes, FollowAnAssignmentThatMakesThemRoots) {
    auto root = std::make_unique<Element>("root");
    (*root)["x"];
    Element& x = EraseFirst(*root);
    x = Element("free");
    EXPECT_EQ(x.P(), nullptr);
    root.reset();
    EXPECT_EQ(x.N(), "free");
    delete &x;
}

TEST(UnlinkedNodes, LeaveTheIndexAlsoWithoutAParent) {
    Element root("root");
    Element& x = root["x"];
    x = Element("free");
    EXPECT_EQ(&EraseFirst(root), &x);
    EXPECT_EQ(&root["x"], &x);
    delete &x;
    EXPECT_EQ(root.ToString("x"), "");
    root["y"];
    Element& y = EraseFirst(root);
    y = Element("free");
    delete &y;
    EXPECT_EQ(root["y"].P(), &root);
}

TEST(UnlinkedNodes, LeaveEachNameThatTheyHave) {
    Element root("root", "", nullptr);
    const Element other("y", "", &root);
    Element& x = root["x"];
    root["y"];
    x = other;
    x.N("z");
    ASSERT_EQ(&root["x"], &x) << "an assignment leaves the index alone";
    ASSERT_EQ(&root["z"], &x);
    delete &EraseFirst(root);
    EXPECT_EQ(root.ToString("x"), "");
    EXPECT_EQ(root.ToString("z"), "");
    EXPECT_EQ(root["x"].N(), "x");
    EXPECT_EQ(root["z"].N(), "z");
}

TEST(UnlinkedNodes, ThatWereCopiedLeaveTheNameOfTheirElement) {
    Element source("root");
    source["x"];
    Element root(source);
    delete &EraseFirst(root);
    EXPECT_EQ(root["root"].N(), "root");
}

TEST(UnlinkedNodes, OfTheSameNameLeaveTheLaterOneAlone) {
    Element root("root");
    root.NewChild("x", "first");
    root.NewChild("x", "second");
    delete &EraseFirst(root);
    EXPECT_EQ(root.ToString("x"), "second");
}

// A search through the whole index for each of them would take minutes.
TEST(UnlinkedNodes, AreDeletedInATimeThatGrowsWithTheirNumber) {
    Element root("root");
    for (int i = 0; i < 200000; ++i) root += Element(std::to_string(i));
    while (!root.Children().empty()) delete &EraseFirst(root);
    EXPECT_EQ(root.ToString("77"), "");
}

TEST(UnlinkedNodes, MayHaveAParentThatDiedLongAgo) {
    Element root("root");
    auto other = std::make_unique<Element>("other");
    root.Children().push_back(new Element("x", "", other.get()));
    other.reset();
    Element& x = EraseFirst(root);
    EXPECT_TRUE(root.Children().empty());
    delete &x;
}

TEST(UnlinkedNodes, OfAStrangersNameOutliveTheirParent) {
    auto root = std::make_unique<Element>("root");
    (*root)["x"];
    Element stranger("x", "", root.get());
    stranger.N("y");
    root.reset();
    EXPECT_EQ(stranger.P(), nullptr);
    stranger.N("z");
    EXPECT_EQ(stranger.N(), "z");
}

TEST(UnlinkedNodes, OfTreesOfSeveralThreadsShareOnePlace) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 500; ++i) {
                Element root("root");
                root["x"];
                root["y"];
                delete &EraseFirst(root);
                root.clear();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace KM::XML
