#include "Utils/U_XMLReader/Limits.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace KM::XML {
namespace {

std::string RefusalOf(const std::function<void()>& add) {
    try {
        add();
    } catch (const std::length_error& error) { return error.what(); }
    return "";
}

TEST(Limits, AListHolds357913940Entries) {
    EXPECT_EQ(RefusalOf([] { CheckListRoom(357'913'939); }), "");
    EXPECT_EQ(RefusalOf([] { CheckListRoom(357'913'940); }), "list<T> too long");
}

TEST(Limits, AMapHolds97612892Entries) {
    EXPECT_EQ(RefusalOf([] { CheckMapRoom(97'612'891); }), "");
    EXPECT_EQ(RefusalOf([] { CheckMapRoom(97'612'892); }), "map/set<T> too long");
}

}  // namespace
}  // namespace KM::XML
