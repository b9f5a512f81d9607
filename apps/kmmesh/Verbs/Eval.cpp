#include <iostream>
#include <new>

#include "Calculator.h"
#include "Expressions.h"
#include "FailureInText.h"
#include "Output.h"
#include "ProgressLine.h"
#include "StandardInput.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

constexpr const char* TypedText = "expression";

/// On standard error, so that what is printed can go elsewhere.
void ShowPrompt(const char* text) {
    ProgressLine::Clear();
    std::cout << std::flush;
    std::cerr << text << std::flush;
}

void EvaluateTyped(Calculator& calculator, const std::string& line) {
    try {
        if (!Trimmed(line).empty()) calculator.Evaluate(CheckExpression(line, TypedText), TypedText);
    } catch (const KmException& failure) {
        Complain(failure);
    } catch (const std::bad_alloc&) {
        Complain("not enough memory");
    }
}

/// Line by line, until the end of the input. A failure does not end it.
void Converse(Calculator& calculator) {
    StandardInput input;
    try {
        const auto ask = [] { ShowPrompt("> "); };
        for (std::string line; input.TakeLine(ask, line);) EvaluateTyped(calculator, line);
    } catch (...) {
        ShowPrompt("\n");
        throw;
    }
    ShowPrompt("\n");
}

void EvaluateInput(Calculator& calculator) {
    if (StandardInput::IsTerminal()) return Converse(calculator);
    const std::string subject = "standard input";
    calculator.Evaluate(CheckExpression(StandardInput().TakeAll(LongestExpression), subject), subject);
}

void Run(const Values& values) {
    const std::vector<std::string> expressions = values.Texts("expressions");
    const bool isList = values.IsOn("list");
    Calculator calculator(values.IsOn("exact"));
    for (const std::string& value : expressions) {
        const SourceText source = ExpressionIn(value);
        calculator.Evaluate(source.text, source.subject);
    }
    if (isList) Print(calculator.Catalogue());
    else if (expressions.empty()) EvaluateInput(calculator);
}

const Verb verb{"eval",
                "evaluates expressions, also from files or at a prompt",
                {{"expressions", Kind::Expressions, "", "one by one, or files; else standard input"},
                 {"exact", Kind::Switch, "N", "numbers with all their digits; else six"},
                 {"list", Kind::Switch, "N", "the names that can be used, with their help"}},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
