#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "Support/LogCapture.h"
#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

using Test::LogCapture;
using Test::MessageOf;

constexpr double Pi = 3.141592653589793;

double ValueOf(const std::string& text) { return ParsingSession().ToDouble(text); }

TEST(Functions, GiveTheirValues) {
    // Not known to the compiler, which would compute functions of it in its own way.
    volatile const double hidden = 0.7;
    const double v = hidden;
    const struct {
        const char* text;
        double value;
    } rows[] = {
        {"PI", Pi},
        {"pi()", Pi},
        {"-PI", -Pi},
        {"Inf", 1e20},
        {"Eps", 1e-8},
        {"Automatic", 1e20},
        {"Invalid", -1e20},
        {"Automatic == Inf", 1.0},
        {"RadToDeg(2)", 2 / Pi * 180},
        {"RadToDeg(Automatic)", 1e20},
        {"RadToDeg(Invalid)", -1e20 / Pi * 180},
        {"DegToRad(90)", 90 * Pi / 180},
        {"DegToRad(Automatic)", 1e20},
        {"DegToRad(Invalid)", -1e20 * Pi / 180},
        {"ToPlusMinusPi(3)", 3.0},
        {"ToPlusMinusPi(Pi)", Pi},
        {"ToPlusMinusPi(3 * Pi / 2)", 2 * Pi - 3 * Pi / 2},
        {"ToPlusMinusPi(0 - 5)", -5.0},
        {"ToPlusMinusPi(Automatic)", 1e20},
        {"ToPlusMinus180(270)", 90.0},
        {"ToPlusMinus180(180)", 180.0},
        {"ToPlusMinus180(400)", -40.0},
        {"ToPlusMinus180(Automatic)", 1e20},
        {"Sgn(0 - 3)", -1.0},
        {"Sgn(0)", 0.0},
        {"Sgn(0.1)", 1.0},
        {"Sgn(0 / 0)", 0.0},
        {"Morph(10, 20, 0.5)", 15.0},
        {"UnMorph(10, 20, 15)", 0.5},
        {"UnMorph(1, 1, 5)", 0.0},
        {"Min(1, 2)", 1.0},
        {"Min(2, 1)", 1.0},
        {"Max(1, 2)", 2.0},
        {"Max(2, 1)", 2.0},
        {"Bound(5, 0, 3)", 3.0},
        {"Bound(-1, 0, 3)", 0.0},
        {"Bound(2, 0, 3)", 2.0},
        {"Bound(1, 3, 0)", 0.0},
        {"Sqr(3)", 9.0},
        {"Sqrt(9)", 3.0},
        {"Pow(2, 10)", 1024.0},
        {"Log(2)", std::log(2.0)},
        {"Log10(1000)", 3.0},
        {"Fractional(2.25)", 0.25},
        {"Fractional(0 - 0.25)", 0.75},
        {"Round(-0.5)", 0.0},
        {"Round(2.5)", 3.0},
        {"Floor(0 - 1.5)", -2.0},
        {"Ceil(1.2)", 2.0},
        {"Exp(0.7)", std::exp(v)},
        {"SinH(0.7)", std::sinh(v)},
        {"CosH(0.7)", std::cosh(v)},
        {"Abs(0 - 3)", 3.0},
        {"Sin(0.7)", std::sin(v)},
        {"Sin()", std::sin(-1e20)},
        {"Cos(0.7)", std::cos(v)},
        {"Tan(0.7)", std::tan(v)},
        {"ASin(0.7)", std::asin(v)},
        {"ACos(0.7)", std::acos(v)},
        {"ATan(0.7)", std::atan(v)},
        {"ATan2(0 - 1, 2)", std::atan2(-1.0, 2.0)},
        {"IsNear(1, 1.5, 0.6)", 1.0},
        {"IsNear(1, 1.0000001, Eps)", 0.0},
        {"IsNear(1, 1, 0)", 0.0},
        {"IsValid(1)", 1.0},
        {"IsValid(Invalid)", 0.0},
        {"IsValid(0 - 10000000000000000000)", 0.0},
        {"IsValid(0 / 0)", 0.0},
        {"IsAutomatic(Inf)", 1.0},
        {"IsAutomatic(10000000000000000000)", 0.0},
        {"Log(0)", -HUGE_VAL},
        {"1 / 0", HUGE_VAL},
    };
    for (const auto& row : rows) {
        const double value = ValueOf(row.text);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(row.value))
            << row.text << " " << value;
    }
    EXPECT_TRUE(std::isnan(ValueOf("Sqrt(-1)")));
}

double PlainMod(double a, double b) {
    if (std::fabs(b) < 5e-9) return a;
    const double q = a / b;
    const double t = static_cast<double>(static_cast<int>(q));
    const double r = (q - t) * b;
    return r < 0 ? r + b : r;
}

TEST(Mod, FollowsItsFormula) {
    EXPECT_NEAR(ValueOf("Mod(7, 3)"), 1.0, 1e-15);
    EXPECT_NEAR(ValueOf("Mod(0 - 7, 3)"), 2.0, 1e-15);
    EXPECT_EQ(ValueOf("Mod(7, 0)"), 7.0);
    EXPECT_EQ(ValueOf("Mod(7, 0.000000004)"), 7.0);
    EXPECT_EQ(ValueOf("Mod(-1, 3)"), 2.0);
    EXPECT_EQ(ValueOf("Mod(-1, 0 - 3)"), -4.0);
    ParsingSession session;
    const Expression* const mod = session.CreateExpression("Mod(A, B)");
    for (int a = -50; a < 50; ++a)
        for (int b = -20; b < 20; ++b) {
            session.factory["A"]->Set(a * 0.7);
            session.factory["B"]->Set(b * 0.3);
            EXPECT_EQ(mod->ToDouble(), PlainMod(a * 0.7, b * 0.3)) << a << " " << b;
        }
}

TEST(Mod, TakesTheLeastIntForAQuotientThatFitsInNone) {
    EXPECT_EQ(ValueOf("Mod(10000000000, 1)"), 10000000000.0 + 2147483648.0);
    EXPECT_EQ(ValueOf("Mod(Inf, 3)"), (1e20 / 3 + 2147483648.0) * 3);
}

TEST(MinMax, EvaluateTheSecondFirst) {
    EXPECT_EQ(ValueOf("X = 1, Min(X = X * 10, X = X + 1), X"), 20.0);
    EXPECT_EQ(ValueOf("X = 1, Max(X = X * 10, X = X + 1), X"), 20.0);
    EXPECT_EQ(ValueOf("X = 1, Pow(X = X * 10, X = X + 1), X"), 11.0);
}

TEST(MinMax, KeepTheFirstOfWhatCannotBeCompared) {
    EXPECT_TRUE(std::isnan(ValueOf("Min(0 / 0, 1)")));
    EXPECT_EQ(ValueOf("Min(1, 0 / 0)"), 1.0);
    EXPECT_TRUE(std::isnan(ValueOf("Max(0 / 0, 1)")));
    EXPECT_EQ(ValueOf("Max(1, 0 / 0)"), 1.0);
}

TEST(Swap, ExchangesHolders) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("X = 1, Y = 2, Swap(X, Y)"), 0.0);
    EXPECT_EQ(session.ToDouble("X * 10 + Y"), 21.0);
    EXPECT_EQ(session.ToString("$A = \"a\", $B = \"b\", Swap($A, $B), $A + $B"), "ba");
    EXPECT_EQ(session.ToDouble("AUX[0] = 7, Swap(AUX[0], X), X"), 7.0);
    const std::string message = "In SwapFunc. Isn't possible to cast both expressions to doubles or strings holders!";
    for (const char* text : {"Swap(X, $A)", "Swap($A, X)", "Swap(X, 1 + 1)", "Swap(X)", "Swap()"})
        EXPECT_EQ(MessageOf([&] { session.ToDouble(text); }), message) << text;
}

TEST(If, IsAStatement) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("If(1, X = 5)"), 0.0);
    EXPECT_EQ(session.ToDouble("X"), 5.0);
    EXPECT_EQ(session.ToDouble("If(0.4, X = 6), X"), 5.0);
    EXPECT_EQ(session.ToDouble("If(0.5, X = 7), X"), 7.0);
    EXPECT_EQ(session.ToDouble("If2(X == 7, {X = 8, Y = X}), Y"), 8.0);
    EXPECT_EQ(session.ToDouble("Y = If3(X > 0, 1, 2), Y"), 0.0);
    EXPECT_EQ(session.ToDouble("If3(X > 0, X = 1, Z = 2), X * 10 + Z"), 10.0);
    EXPECT_EQ(session.ToDouble("If3(X < 0, X = 9, Z = 2), X * 10 + Z"), 12.0);
    EXPECT_EQ(session.ToDouble("If(Automatic, X = 3), X"), 3.0);
    EXPECT_EQ(session.ToDouble("If(), X"), 3.0);
}

TEST(Dump, WritesToTheLog) {
    ParsingSession session;
    const LogCapture log;
    EXPECT_EQ(session.ToDouble("Dump(1 / 3)"), 0.0);
    session.Process("Dump(\"a\" + 1)");
    session.Process("Dump()");
    EXPECT_EQ(log.Texts(Verbose::EMessageType::System),
              (std::vector<std::string>{"DumpFunc: 0.333333", "DumpFunc: a1", "DumpFunc: -1e+20"}));
}

}  // namespace
}  // namespace KM::Parsing
