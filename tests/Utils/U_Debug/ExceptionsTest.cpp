#include "Utils/U_Debug/Exceptions.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace KM {
namespace {

// An exception whose copy throws ends the process.
static_assert(std::is_nothrow_copy_constructible_v<KmExceptionBase>);
static_assert(std::is_nothrow_copy_constructible_v<KmException>);
static_assert(std::is_base_of_v<std::exception, KmExceptionBase>);
static_assert(!std::is_polymorphic_v<Exception>);
static_assert(std::is_empty_v<XUserAbort> && std::is_empty_v<XRestartMe> && std::is_empty_v<XNone>);

template <class Thrown, class Caught>
bool Catches(const Thrown& thrown) {
    try {
        throw thrown;
    } catch (const Caught&) { return true; } catch (...) {
        return false;
    }
}

TEST(KmException, WithoutMessageIsUnknown) {
    EXPECT_STREQ(KmException("Host.cpp", 12).what(), "Unknown exception");
    EXPECT_STREQ(KmExceptionBase("Host.cpp", 12).what(), "Unknown exception");
    EXPECT_STREQ(KmException(static_cast<const char*>(nullptr), "Host.cpp", 12).what(), "Unknown exception");
}

TEST(KmException, KeepsAnEmptyMessage) { EXPECT_STREQ(KmException("", "Host.cpp", 12).what(), ""); }

TEST(KmException, CarriesMessageFileAndLine) {
    const KmException e("In Indexed. Index: 7 is out of range!", "Indexed.cpp", 345);
    EXPECT_STREQ(e.what(), "In Indexed. Index: 7 is out of range!");
    EXPECT_EQ(e.File(), "Indexed.cpp");
    EXPECT_EQ(e.Line(), 345u);
}

TEST(KmException, CopiesTheTextItIsGiven) {
    char message[] = "In Here. No.";
    char file[] = "a.cpp";
    const KmException e(message, file, 1);
    message[0] = file[0] = '?';
    EXPECT_STREQ(e.what(), "In Here. No.");
    EXPECT_EQ(e.File(), "a.cpp");
}

TEST(KmException, TakesAStringToo) {
    const KmException e(std::string("In XMLValue. Found an undefined type when accessing key: ") + "a.b", "v.cpp", 9);
    EXPECT_STREQ(e.what(), "In XMLValue. Found an undefined type when accessing key: a.b");
    EXPECT_EQ(e.File(), "v.cpp");
    EXPECT_EQ(e.Line(), 9u);
}

TEST(KmException, CopiesAllThree) {
    const KmException first("In Here. No.", "a.cpp", 1);
    KmException copy(first);
    EXPECT_STREQ(copy.what(), "In Here. No.");
    EXPECT_EQ(copy.File(), "a.cpp");
    EXPECT_EQ(copy.Line(), 1u);
    copy = KmException("b.cpp", 2);
    EXPECT_STREQ(copy.what(), "Unknown exception");
    EXPECT_EQ(copy.File(), "b.cpp");
    EXPECT_EQ(copy.Line(), 2u);
    EXPECT_STREQ(first.what(), "In Here. No.");
}

TEST(KmException, OfANullFileHasAnEmptyOne) { EXPECT_EQ(KmException(nullptr, 3).File(), ""); }

TEST(KmException, IsCaughtAsItsBasesAndNotAsTheRecord) {
    const KmException e("a.cpp", 1);
    EXPECT_TRUE((Catches<KmException, KmExceptionBase>(e)));
    EXPECT_TRUE((Catches<KmException, std::exception>(e)));
    EXPECT_FALSE((Catches<KmException, Exception>(e)));
}

TEST(Exception, IsARecordOfThreeFields) {
    const Exception e{"Type", "a.cpp", 5};
    EXPECT_EQ(e.type, "Type");
    EXPECT_EQ(e.file, "a.cpp");
    EXPECT_EQ(e.line, 5);
    EXPECT_TRUE((Catches<Exception, Exception>(e)));
    EXPECT_FALSE((Catches<Exception, std::exception>(e)));
}

TEST(Tags, AreCaughtByTheirExactTypeOnly) {
    EXPECT_TRUE((Catches<XUserAbort, XUserAbort>({})));
    EXPECT_TRUE((Catches<XRestartMe, XRestartMe>({})));
    EXPECT_TRUE((Catches<XNone, XNone>({})));
    EXPECT_FALSE((Catches<XUserAbort, std::exception>({})));
    EXPECT_FALSE((Catches<XUserAbort, XRestartMe>({})));
    EXPECT_FALSE((Catches<XRestartMe, XNone>({})));
    EXPECT_FALSE((Catches<XNone, XUserAbort>({})));
}

}  // namespace
}  // namespace KM
