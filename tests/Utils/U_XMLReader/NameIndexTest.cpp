#include "Utils/U_XMLReader/NameIndex.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <random>
#include <string>

#include "Utils/U_XMLReader/Element.h"

namespace KM::XML {
namespace {

TEST(NameIndex, FindsTheElementThatWasSetLast) {
    NameIndex index;
    Element a("E");
    Element b("E");
    EXPECT_EQ(index.Find("A"), nullptr);
    index.Set("A", &a);
    index.Set("", &b);
    EXPECT_EQ(index.Find("A"), &a);
    EXPECT_EQ(index.Find(""), &b);
    EXPECT_EQ(index.Find("a"), nullptr);
    index.Set("A", &b);
    EXPECT_EQ(index.Find("A"), &b);
}

TEST(NameIndex, TellsNamesApartThatEndAlike) {
    NameIndex index;
    Element elements[] = {Element("E"), Element("E"), Element("E")};
    index.Set("Face1", &elements[0]);
    index.Set("Edge1", &elements[1]);
    index.Set(std::string("Face\0", 5) + "1", &elements[2]);
    EXPECT_EQ(index.Find("Face1"), &elements[0]);
    EXPECT_EQ(index.Find("Edge1"), &elements[1]);
    EXPECT_EQ(index.Find(std::string("Face\0", 5) + "1"), &elements[2]);
}

TEST(NameIndex, ErasesByNameAndByElement) {
    NameIndex index;
    Element a("E");
    Element b("E");
    index.Set("A", &a);
    index.Set("B", &a);
    index.Set("C", &b);
    index.Erase("Z");
    index.EraseElement(&a);
    EXPECT_EQ(index.Find("A"), nullptr);
    EXPECT_EQ(index.Find("B"), nullptr);
    index.Erase("C");
    EXPECT_EQ(index.Find("C"), nullptr);
    index.Set("C", &a);
    EXPECT_EQ(index.Find("C"), &a);
}

TEST(NameIndex, IsAMapAtEachSize) {
    // Short rows are searched, long ones hashed; erased entries stay in them until they grow.
    std::mt19937 random(1);
    std::deque<Element> elements;
    for (int i = 0; i < 200; ++i) elements.emplace_back("E");
    for (const unsigned names : {5u, 12u, 13u, 14u, 60u, 500u}) {
        NameIndex index;
        std::map<std::string, Element*> plain;
        for (int step = 0; step < 3000; ++step) {
            const std::string name = "Name" + std::to_string(random() % names);
            Element* const element = &elements[random() % elements.size()];
            const unsigned choice = random() % 8;
            if (choice < 4) {
                index.Set(name, element);
                plain[name] = element;
            } else if (choice < 7) {
                index.Erase(name);
                plain.erase(name);
            } else {
                index.EraseElement(element);
                std::erase_if(plain, [&](const auto& entry) { return entry.second == element; });
            }
        }
        for (unsigned i = 0; i < names; ++i) {
            const std::string name = "Name" + std::to_string(i);
            const auto found = plain.find(name);
            EXPECT_EQ(index.Find(name), found != plain.end() ? found->second : nullptr) << names << " " << name;
        }
    }
}

}  // namespace
}  // namespace KM::XML
