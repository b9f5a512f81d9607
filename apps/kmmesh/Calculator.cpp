#include "Calculator.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "FailureInText.h"
#include "Output.h"
#include "Utils/U_Parser/Blocks.h"
#include "Utils/U_Parser/HostNodes.h"
#include "Utils/U_Parser/Values.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Tool {
namespace {

using Parsing::Agregate;
using Parsing::Expression;

/// What names look like that their nodes write in another way.
constexpr const char* OtherNames[] = {"$Aux", "$P", "$ToString", "Aux", "If2", "WriteLine", "XMLValue"};

std::string InCapitals(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

std::string ShownName(const std::string& key, const Expression& entry) {
    if (InCapitals(entry.Name()) == key) return entry.Name();
    const auto* const other =
        std::find_if(std::begin(OtherNames), std::end(OtherNames), [&](const char* n) { return InCapitals(n) == key; });
    return other != std::end(OtherNames) ? *other : OnOneLine(key);
}

std::string Row(const std::string& name, const std::string& operands, const std::string& help) {
    std::string row = Format("%-15s %8s  %s", name.c_str(), operands.c_str(), help.c_str());
    return row.erase(row.find_last_not_of(' ') + 1) + '\n';
}

/// The last statement of a block, or the node itself.
Expression* LastOf(Expression* node) {
    const auto* const block = dynamic_cast<const Agregate*>(node);
    return block != nullptr && !block->subExpressions.empty() ? block->subExpressions.back() : node;
}

/// The statement that a call ends with, or the node itself.
Expression* EndOf(Expression* node) {
    for (;;) {
        const auto* const call = dynamic_cast<const Parsing::Function*>(node);
        Expression* const next = LastOf(call != nullptr && call->body != nullptr ? call->body : node);
        if (next == node) return node;
        node = next;
    }
}

bool IsAssignmentToText(const Expression& node) {
    const std::string name = node.Name();
    return node.OpPrecedence() == 16 && name.ends_with('=') && node.subExpressions.size() == 2 &&
           dynamic_cast<const Parsing::StringChanger*>(node.subExpressions[0]) != nullptr;
}

bool HasValue(const Expression& node) {
    static const std::set<std::string> withoutValue = {"Dump", "If", "If2", "If3", "Swap", "Void", "WriteLineType"};
    return !withoutValue.contains(node.Name()) && !IsAssignmentToText(node);
}

std::string Exact(double value) {
    char digits[32];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
    return {digits, end};
}

}  // namespace

Calculator::Calculator(bool isExact) : isExact_(isExact) {
    session_.Add("XMLValue", session_.AddToDealloc(new Parsing::XMLValueConst(Settings::ToXMLElement(std::string()))));
    session_.Add("WriteLine", session_.AddToDealloc(new Parsing::WriteLineType(written_, true)));
    // The first line of a process has no line feed ahead. That one is written here, to nowhere, so that all others do.
    std::ostringstream nowhere;
    Parsing::WriteLineType(nowhere, true).ToDouble();
}

void Calculator::Evaluate(const std::string& text, const std::string& subject) {
    try {
        const std::string value = ValueOf(*session_.CreateExpression(text));
        PrintWritten();
        Print(value);
    } catch (const Parsing::ParsingException& failure) {
        PrintWritten();
        throw FailureInText(subject, text, failure);
    } catch (...) {
        PrintWritten();
        throw;
    }
}

std::string Calculator::ValueOf(Expression& tree) const {
    Expression* node = &tree;
    // Statement by statement: whether the last one is a text can depend on those ahead, as with the key of `XMLValue`.
    for (Expression* last = LastOf(node); last != node; last = LastOf(node)) {
        for (std::size_t i = 0; i + 1 < node->subExpressions.size(); ++i) node->subExpressions[i]->ToDouble();
        node = last;
    }
    if (node->EvaluateAsString()) return node->ToString() + '\n';
    const double value = node->ToDouble();
    if (!HasValue(*EndOf(node))) return "";
    return (isExact_ ? Exact(value) : Parsing::DoubleConst(value).ToString()) + '\n';
}

void Calculator::PrintWritten() {
    const std::string lines = written_.str();
    written_.str("");
    if (!lines.empty()) Print(lines.substr(1) + '\n');
}

std::string Calculator::Catalogue() const {
    std::string table = Row("name", "operands", "help");
    for (const auto& [key, entry] : session_.factory) {
        if (entry->Name() == "_OPEN_") continue;  // a mark of the compiler
        table += Row(ShownName(key, *entry), std::to_string(std::max(entry->Parameters(), 0)), entry->Help());
    }
    return table;
}

}  // namespace KM::Tool
