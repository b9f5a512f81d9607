#include <gtest/gtest.h>

#include <cctype>
#include <iterator>
#include <string>

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

constexpr const char* Call = "Function call format(prefixed).";

const struct {
    const char* name;
    int parameters;
    const char* help;
} Functions[] = {
    {"Pi", 0, "Pi value. Function call format(prefixed)."},
    {"Inf", 0, "Inf value. Function call format(prefixed)."},
    {"Eps", 0, "Eps value. Function call format(prefixed)."},
    {"Automatic", 0, "Automatic value. Function call format(prefixed)."},
    {"Invalid", 0, "Invalid value. Function call format(prefixed)."},
    {"RadToDeg", 1, "Convert from Radians to Degree. Function call format(prefixed)."},
    {"DegToRad", 1, "Convert from Degree to Radians. Function call format(prefixed)."},
    {"ToPlusMinusPi", 1, "Convert a[0.. 2 * PI] in[-PI, +PI]. Function call format(prefixed)."},
    {"ToPlusMinus180", 1, "Convert a[0.. 360] in[-180, +180]. Function call format(prefixed)."},
    {"Mod", 2, "Modulo. Function call format(prefixed)."},
    {"Sgn", 1, "Sgn for a signed type {-1, 0, 1}. Function call format(prefixed)."},
    {"Morph", 3, "Linear interpolation. (min, max, t). Function call format(prefixed)."},
    {"UnMorph", 3, "Reversed linear interpolation. (min, max, t). Function call format(prefixed)."},
    {"Min", 2, "Minimium between 2 values. Function call format(prefixed)."},
    {"Max", 2, "Maximium between 2 values. Function call format(prefixed)."},
    {"Swap", 2, "Swap two values. Function call format(prefixed)."},
    {"If", 2, "If(firstParam == true) do second. Function call format(prefixed)."},
    {"If2", 2, "If(firstParam == true) do second. Function call format(prefixed)."},
    {"If3", 3, "If3(firstParam == true) do second else do third. Function call format(prefixed)."},
    {"Bound", 3, "Bound a value. (value, min, max). Function call format(prefixed)."},
    {"Sqr", 1, "V^2. Function call format(prefixed)."},
    {"Sqrt", 1, "Square root. Function call format(prefixed)."},
    {"Pow", 2, "P1^P2. Function call format(prefixed)."},
    {"Log", 1, "Natural logarithm. Function call format(prefixed)."},
    {"Log10", 1, "Logarithm in 10 base. Function call format(prefixed)."},
    {"Fractional", 1, "Return fractional part. Function call format(prefixed)."},
    {"Round", 1, Call},
    {"Floor", 1, Call},
    {"Ceil", 1, Call},
    {"Exp", 1, Call},
    {"SinH", 1, Call},
    {"CosH", 1, Call},
    {"Abs", 1, Call},
    {"Sin", 1, Call},
    {"Cos", 1, Call},
    {"Tan", 1, Call},
    {"ASin", 1, Call},
    {"ACos", 1, Call},
    {"ATan", 1, Call},
    {"ATan2", 2, Call},
    {"IsNear", 3, Call},
    {"IsValid", 1, Call},
    {"IsAutomatic", 1, Call},
    {"Dump", 1, Call},
};

const struct {
    const char* name;
    int precedence;
    const char* help;
} Operators[] = {
    {"-", 6, "Infix or prefix operator -."}, {"*", 5, "Infix operator *."},    {"/", 5, "Infix operator /."},
    {"=", 16, "Infix operator =."},          {"+=", 16, "Infix operator +=."}, {"-=", 16, "Infix operator -=."},
    {"*=", 16, "Infix operator *=."},        {"/=", 16, "Infix operator /=."}, {"&&", 14, "Infix operator &&."},
    {"||", 15, "Infix operator ||."},        {"<", 8, "Infix operator <."},    {"<=", 8, "Infix operator <=."},
    {">", 8, "Infix operator >."},           {">=", 8, "Infix operator >=."},  {"==", 9, "Infix operator ==."},
    {"!=", 9, "Infix operator !=."},
};

const struct {
    const char* key;
    const char* name;
    int parameters;
} Structure[] = {{"_OPEN_", "_OPEN_", 0},
                 {"AUX", "DoublesIndexer", 1},
                 {"$AUX", "StringsIndexer", 1},
                 {"$P", "ParametersIndexer", 1},
                 {"+", "AddType", 2},
                 {"VOID", "Void", 0},
                 {"$TOSTRING", "ToStringType", 3},
                 {"TOSTRING", "ToStringType", 3}};

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(c));
    return text;
}

TEST(Catalogue, HasItsFunctions) {
    const ParsingSession session;
    for (const auto& row : Functions) {
        SCOPED_TRACE(row.name);
        const Expression& entry = *session.factory.at(Upper(row.name));
        EXPECT_EQ(entry.Name(), row.name);
        EXPECT_EQ(entry.Parameters(), row.parameters);
        EXPECT_EQ(entry.OpPrecedence(), 0);
        EXPECT_EQ(entry.Help(), row.help);
    }
}

TEST(Catalogue, HasItsOperators) {
    const ParsingSession session;
    for (const auto& row : Operators) {
        SCOPED_TRACE(row.name);
        const Expression& entry = *session.factory.at(row.name);
        EXPECT_EQ(entry.Name(), row.name);
        EXPECT_EQ(entry.Parameters(), 2);
        EXPECT_EQ(entry.OpPrecedence(), row.precedence);
        EXPECT_EQ(entry.Help(), row.help);
    }
}

TEST(Catalogue, HasItsStructure) {
    const ParsingSession session;
    for (const auto& row : Structure) {
        EXPECT_EQ(session.factory.at(row.key)->Name(), row.name);
        EXPECT_EQ(session.factory.at(row.key)->Parameters(), row.parameters);
    }
    EXPECT_EQ(session.factory.at("+")->OpPrecedence(), 6);
}

TEST(Catalogue, HasNothingElse) {
    const ParsingSession session;
    EXPECT_EQ(session.factory.size(), std::size(Functions) + std::size(Operators) + std::size(Structure));
    EXPECT_EQ(session.expressionsToDeallocate.size(), session.factory.size());
}

TEST(Catalogue, EntriesAloneDoNotFail) {
    const ParsingSession session;
    for (const auto& [key, entry] : session.factory) {
        if (key == "AUX" || key == "$AUX" || key == "$P" || key == "SWAP" || key.ends_with("=")) continue;
        entry->ToDouble();
        entry->ToString();
        EXPECT_FALSE(entry->IsDoubleHolder() || entry->IsStringHolder());
    }
}

}  // namespace
}  // namespace KM::Parsing
