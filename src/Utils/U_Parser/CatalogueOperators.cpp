#include <functional>
#include <string>

#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Parser/Catalogue.h"
#include "Utils/U_Parser/CatalogueEntry.h"
#include "Utils/U_Parser/NumberText.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/TextNodes.h"

namespace KM::Parsing {
namespace {

double Minus(double a, double b) { return a - b; }
double Times(double a, double b) { return a * b; }
double Over(double a, double b) { return a / b; }

enum class Holder { Number, Text };

Holder HolderOf(const std::vector<Expression*>& operands) {
    if (operands.size() == 2 && operands[0]->IsDoubleHolder()) return Holder::Number;
    if (operands.size() == 2 && operands[0]->IsStringHolder()) return Holder::Text;
    throw ParsingException("In EqualFunc. Isn't possible to cast first expression to doubles or string holder!",
                           __LINE__);
}

class Assign final : public Cloned<Assign, 2> {
public:
    using Cloned::Cloned;
    double ToDouble() const override {
        if (HolderOf(subExpressions) == Holder::Text) {
            subExpressions[0]->Set(Text(1));
            return 0.0;
        }
        const double value = Number(1);
        // An invalid value leaves the variable as it was.
        if (value > InvalidLimit) subExpressions[0]->Set(value);
        return value;
    }
};

class AddAssign final : public Cloned<AddAssign, 2> {
public:
    using Cloned::Cloned;
    double ToDouble() const override {
        if (HolderOf(subExpressions) == Holder::Text) {
            const std::string text = Text(0);
            subExpressions[0]->Set(text + Text(1));
            return 0.0;
        }
        const double value = Number(0);
        subExpressions[0]->Set(value + Number(1));
        return Number(0);
    }
};

/// The value is there before the left side is asked what it holds.
template <double (*Rule)(double, double)>
class ComputeAssign final : public Cloned<ComputeAssign<Rule>, 2> {
public:
    using Cloned<ComputeAssign<Rule>, 2>::Cloned;
    double ToDouble() const override {
        const double first = this->Number(0);
        const double value = Rule(first, this->Number(1));
        if (HolderOf(this->subExpressions) == Holder::Text) {
            this->subExpressions[0]->Set(NumberText(value));
            return 0.0;
        }
        this->subExpressions[0]->Set(value);
        return value;
    }
};

/// Of texts, byte by byte, if the first operand is one; else of numbers, without tolerance.
template <class Rule>
class Comparison final : public Cloned<Comparison<Rule>, 2> {
public:
    using Cloned<Comparison<Rule>, 2>::Cloned;
    double ToDouble() const override { return (this->IsText(0) ? CompareTexts() : CompareNumbers()) ? 1.0 : 0.0; }

private:
    bool CompareNumbers() const {
        const double first = this->Number(0);
        return Rule()(first, this->Number(1));
    }
    bool CompareTexts() const {
        const std::string first = this->Text(0);
        return Rule()(first, this->Text(1));
    }
};

class AndLogic final : public Cloned<AndLogic, 2> {
public:
    using Cloned::Cloned;
    double ToDouble() const override { return Number(0) != 0.0 && Number(1) != 0.0 ? 1.0 : 0.0; }
};

class OrLogic final : public Cloned<OrLogic, 2> {
public:
    using Cloned::Cloned;
    double ToDouble() const override { return Number(0) != 0.0 || Number(1) != 0.0 ? 1.0 : 0.0; }
};

}  // namespace

void RegisterOperators(ParsingSession& session) {
    const char* const infix = "Infix operator";
    session.Add("+", session.AddToDealloc(new AddType));
    Register<Of2<Minus>>(session, {"-", "Infix or prefix operator", 6});
    Register<Of2<Times>>(session, {"*", infix, 5});
    Register<Of2<Over>>(session, {"/", infix, 5});
    Register<Assign>(session, {"=", infix, 16});
    Register<AddAssign>(session, {"+=", infix, 16});
    Register<ComputeAssign<Minus>>(session, {"-=", infix, 16});
    Register<ComputeAssign<Times>>(session, {"*=", infix, 16});
    Register<ComputeAssign<Over>>(session, {"/=", infix, 16});
    Register<AndLogic>(session, {"&&", infix, 14});
    Register<OrLogic>(session, {"||", infix, 15});
    Register<Comparison<std::less<>>>(session, {"<", infix, 8});
    Register<Comparison<std::less_equal<>>>(session, {"<=", infix, 8});
    Register<Comparison<std::greater<>>>(session, {">", infix, 8});
    Register<Comparison<std::greater_equal<>>>(session, {">=", infix, 8});
    Register<Comparison<std::equal_to<>>>(session, {"==", infix, 9});
    Register<Comparison<std::not_equal_to<>>>(session, {"!=", infix, 9});
}

}  // namespace KM::Parsing
