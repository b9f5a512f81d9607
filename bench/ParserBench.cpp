// Expressions: a text of 10 KB into a tree, and trees evaluated, beside the same formula in C++. An item is a token of the
// text, or an evaluation.
// Usage: ParserBench [evaluations; 100000 by default]

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "Km.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

using Parsing::Expression;
using Parsing::ParsingSession;

const std::string Formula = "A * Sin(B) + Min(C, D) / 2 - (A > B) * 3";

/// The operands, as the optimiser cannot know them.
struct Operands {
    volatile double a = 0.3, b = 0.7, c = 5.0, d = 3.0;
};

double Evaluate(const Operands& o) {
    const double a = o.a, b = o.b, c = o.c, d = o.d;
    return a * std::sin(b) + std::min(c, d) / 2 - (a > b ? 1.0 : 0.0) * 3;
}

void MeasureFormula(Report& report, int count) {
    const std::string floor = "floor: the formula in C++";
    const Operands operands;
    report.Measure({floor, static_cast<double>(count)}, [&] {
        double sum = 0.0;
        for (int i = 0; i < count; ++i) sum += Evaluate(operands);
        return sum;
    });
    ParsingSession session;
    session.Process("A = 0.3, B = 0.7, C = 5, D = 3");
    const Expression* const tree = session.CreateExpression(Formula);
    report.Measure({"the formula as a tree", static_cast<double>(count), 0.0, floor}, [&] {
        double sum = 0.0;
        for (int i = 0; i < count; ++i) sum += tree->ToDouble();
        return sum;
    });
}

std::string Block(int statements) {
    std::string text = "{";
    for (int i = 0; i < statements; ++i) {
        const std::string number = std::to_string(i);
        text += "X" + number + " = X" + number + " * 0.5 + Max(A, " + number + "),\n";
    }
    return text + "X0}";
}

double EvaluateBlock(volatile double* x, int statements, const Operands& operands) {
    for (int i = 0; i < statements; ++i) {
        const double a = operands.a;
        x[i] = x[i] * 0.5 + std::max(a, static_cast<double>(i));
    }
    return x[0];
}

void MeasureBlock(Report& report, int count) {
    constexpr int statements = 100;
    const std::string floor = "floor: 100 statements in C++";
    const Operands operands;
    volatile double x[statements] = {};
    report.Measure({floor, static_cast<double>(count)}, [&] {
        double sum = 0.0;
        for (int i = 0; i < count; ++i) sum += EvaluateBlock(x, statements, operands);
        return sum;
    });
    ParsingSession session;
    const Expression* const tree = session.CreateExpression(Block(statements));
    report.Measure({"100 statements as a tree", static_cast<double>(count), 0.0, floor}, [&] {
        double sum = 0.0;
        for (int i = 0; i < count; ++i) sum += tree->ToDouble();
        return sum;
    });
}

void MeasureCompiler(Report& report) {
    const std::string text = Block(280);
    const double tokens = static_cast<double>(Parsing::ExtractTokens(text, false).size());
    const double bytes = static_cast<double>(text.size());
    report.Measure({"tokens of a text of 10 KB", tokens, bytes}, [&] { return Parsing::ExtractTokens(text, false); });
    report.Measure(
        {"compile a text of 10 KB", tokens, bytes}, [] { return ParsingSession(); },
        [&](ParsingSession& session) { return session.CreateExpression(text)->Depth(); });
    report.Measure({"a new session", 1.0}, [] { return ParsingSession(); });
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM::Bench;
    const int asked = argc > 1 ? std::atoi(argv[1]) : 100000;
    const int count = asked > 0 ? asked : 100000;
    Report report("expressions (read \"triangle\" as evaluation, or token)");
    MeasureFormula(report, count);
    MeasureBlock(report, count / 100 + 1);
    MeasureCompiler(report);
}
