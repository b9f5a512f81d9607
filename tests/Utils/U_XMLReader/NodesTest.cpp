#include "Utils/U_XMLReader/Nodes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "Utils/U_XMLReader/Element.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

TEST(Base, KeepsWhatItIsMadeOf) {
    Element root("root");
    const Attribute a("name", "value", &root);
    EXPECT_EQ(a.N(), "name");
    EXPECT_EQ(a.V(), "value");
    EXPECT_EQ(a.P(), &root);
    EXPECT_EQ(a.SettingSession(), GetSettingSession());
}

TEST(Base, CopiesAllFourFields) {
    Element root("root");
    Attribute a("name", "value", &root);
    a.SettingSession(42);
    Attribute b("other");
    b = a;
    for (const Attribute& copy : {Attribute(a), b}) {
        EXPECT_EQ(copy.N(), "name");
        EXPECT_EQ(copy.V(), "value");
        EXPECT_EQ(copy.P(), &root);
        EXPECT_EQ(copy.SettingSession(), 42);
    }
}

TEST(Base, ValueCanBeWrittenThroughItsAddress) {
    Attribute a("name", "value");
    a.VAddress() += "s";
    EXPECT_EQ(a.V(), "values");
}

TEST(Base, UnchangedValueLeavesTheStamp) {
    Attribute a("name", "value");
    a.SettingSession(0);
    a.V("value");
    EXPECT_EQ(a.SettingSession(), 0);
    a.V(a.V());
    EXPECT_EQ(a.SettingSession(), 0);
    a.V("other");
    EXPECT_EQ(a.SettingSession(), GetSettingSession());
}

TEST(Attribute, WithoutParentChangesItsName) {
    Attribute a("name", "value");
    a.N("other");
    EXPECT_EQ(a.N(), "other");
}

TEST(Attribute, WithParentRefusesANewName) {
    Element root("root");
    Attribute a("name", "value", &root);
    EXPECT_THROW(a.N("other"), Attribute::XParrentNotFound);
    EXPECT_EQ(a.N(), "name");
}

TEST(Comment, ChangesItsNameWhateverItsParent) {
    Element root("root");
    Comment comment("text", &root);
    EXPECT_EQ(comment.N(), "!COMMENT!");
    comment.N("other");
    EXPECT_EQ(comment.N(), "other");
}

TEST(Nodes, NameTheTextsBetweenElements) {
    EXPECT_EQ(std::string(CommentName), "!COMMENT!");
    EXPECT_EQ(std::string(CDATAName), "!CDATA!");
    EXPECT_EQ(std::string(CommandName), "!COMMAND!");
    EXPECT_EQ(CDATA("text").N(), "!CDATA!");
    EXPECT_EQ(CDATA("name", "text", nullptr).N(), "name");
    EXPECT_EQ(Comment("name", "text", nullptr).V(), "text");
}

TEST(Nodes, CloneToTheirOwnKind) {
    Element root("root");
    const Comment comment("text", &root);
    const CDATA cdata("data");
    const Attribute attribute("name", "value");
    const Base* sources[] = {&comment, &cdata, &attribute, &root};
    for (const Base* source : sources) {
        const std::unique_ptr<Base> clone(source->Clone());
        const Base& copy = *clone;
        EXPECT_TRUE(typeid(copy) == typeid(*source));
        EXPECT_EQ(copy.N(), source->N());
        EXPECT_EQ(copy.V(), source->V());
        EXPECT_EQ(copy.P(), source->P());
    }
}

#if !defined(_WIN32)
// Where a virtual operation stands in the table. A destructor takes two entries with this family of compilers.
template <class Operation>
std::size_t SlotOf(Operation operation) {
    std::size_t offset[2];
    static_assert(sizeof operation == sizeof offset);
    std::memcpy(offset, &operation, sizeof offset);
    return (offset[0] - 1) / sizeof(void*);
}

TEST(Base, HasItsVirtualOperationsInTheirOrder) {
    using Text = const std::string&;
    EXPECT_EQ(SlotOf(&Base::Clone), 2u);
    EXPECT_EQ(SlotOf(static_cast<void (Base::*)(Text)>(&Base::N)), 3u);
    EXPECT_EQ(SlotOf(static_cast<Text (Base::*)() const>(&Base::N)), 4u);
    EXPECT_EQ(SlotOf(&Base::VAddress), 5u);
    EXPECT_EQ(SlotOf(static_cast<void (Base::*)(Text)>(&Base::V)), 6u);
    EXPECT_EQ(SlotOf(static_cast<Text (Base::*)() const>(&Base::V)), 7u);
    EXPECT_EQ(SlotOf(static_cast<Element* (Base::*)()>(&Base::P)), 8u);
    EXPECT_EQ(SlotOf(static_cast<const Element* (Base::*)() const>(&Base::P)), 9u);
}
#endif

}  // namespace
}  // namespace KM::XML
