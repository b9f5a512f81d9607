#include "Utils/U_Parser/Expression.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

/// What a host writes to add a function.
class Twice : public Expression {
public:
    Expression* Clone() const override { return new Twice(*this); }
    double ToDouble() const override { return 2 * Value(0); }
    int Parameters() const override { return 1; }
    std::string Help() const override { return "Doubles."; }
    void OnOperands() override { ++calls; }

    int calls = 0;
};

class Plain : public Expression {
public:
    Expression* Clone() const override { return new Plain(*this); }
};

/// Shows what its operands say.
class Asking : public Plain {
public:
    using Expression::Int;
    using Expression::IsText;
    using Expression::Text;
    using Expression::Value;
};

class Number : public Plain {
public:
    explicit Number(double value) : value_(value) {}
    double ToDouble() const override { return value_; }

private:
    double value_;
};

TEST(Expression, AnswersWithNothing) {
    Plain node;
    EXPECT_EQ(node.ToDouble(), 0.0);
    EXPECT_EQ(node.ToInt(), 0);
    EXPECT_EQ(node.ToString(), "0");
    EXPECT_FALSE(node.IsDoubleHolder());
    EXPECT_FALSE(node.IsStringHolder());
    EXPECT_FALSE(node.EvaluateAsString());
    EXPECT_EQ(node.Parameters(), 0);
    EXPECT_EQ(node.OpPrecedence(), 0);
    EXPECT_EQ(node.Name(), "Expression");
    EXPECT_EQ(node.Help(), "");
    EXPECT_EQ(node.Depth(), 1);
    node.Set(1.0);
    node.Set("a");
    EXPECT_EQ(node.ToDouble(), 0.0);
}

TEST(Expression, RoundsToInt) {
    const struct {
        double value;
        int rounded;
    } rows[] = {{0.4, 0},        {0.5, 1},         {-0.5, 0},
                {-0.6, -1},      {2.5, 3},         {2147483647.0, INT_MAX},
                {1e20, INT_MIN}, {-1e20, INT_MIN}, {std::numeric_limits<double>::quiet_NaN(), INT_MIN}};
    for (const auto& row : rows) EXPECT_EQ(Number(row.value).ToInt(), row.rounded) << row.value;
}

TEST(Expression, AMissingOperandIsInvalid) {
    const Asking node;
    EXPECT_EQ(node.Value(0), -1e20);
    EXPECT_EQ(node.Int(0), INT_MIN);
    EXPECT_EQ(node.Text(0), "-1e+20");
    EXPECT_FALSE(node.IsText(0));
}

TEST(Expression, AHostAddsFunctions) {
    ParsingSession session;
    session.Add("Twice", session.AddToDealloc(new Twice));
    Expression* const tree = session.CreateExpression("Twice(3) + 1");
    EXPECT_EQ(tree->ToDouble(), 7.0);
    EXPECT_EQ(tree->Depth(), 3);
    EXPECT_EQ(static_cast<Twice*>(tree->subExpressions[0])->calls, 1);
    EXPECT_EQ(session.factory.at("TWICE")->Help(), "Doubles.");
    EXPECT_EQ(session.ToDouble("Twice()"), -2e20);
}

TEST(Expression, AHostNamesATree) {
    ParsingSession session;
    session.Add("Next", session.CreateExpression("{I += 1, I * 10}"));
    EXPECT_EQ(session.ToDouble("Next, Next() + 1"), 21.0);
}

TEST(Expression, ACopyHasTheSameOperandsAndAPlaceOfItsOwn) {
    ParsingSession session;
    Expression* const tree = session.CreateExpression("Sin(1)");
    Expression* const copy = tree->Clone();
    EXPECT_EQ(copy->subExpressions, tree->subExpressions);
    EXPECT_EQ(copy->ToDouble(), tree->ToDouble());
    delete copy;
    EXPECT_EQ(tree->ToDouble(), std::sin(1.0));
}

}  // namespace
}  // namespace KM::Parsing
