// Any bytes, as an expression: the stages answer with a tree or a `KmException`, and what they made can be evaluated.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "Km.h"

namespace {

using KM::Parsing::Expression;
using KM::Parsing::ParsingSession;

/// Calls and operands that are evaluated more than once multiply with each level. So few levels, and so few functions, keep
/// the steps of an evaluation in the thousands.
bool IsQuick(const std::string& text) {
    int depth = 0;
    int deepest = 0;
    for (const char c : text) {
        if (c == '(' || c == '[' || c == '{') deepest = std::max(deepest, ++depth);
        if (c == ')' || c == ']' || c == '}') --depth;
    }
    return text.size() < 400 && deepest <= 6 && std::count(text.begin(), text.end(), '#') <= 2;
}

template <class Work>
void Try(Work work) {
    try {
        work();
    } catch (const KM::KmException& failure) {
        if (!std::string(failure.what()).starts_with("In ")) std::abort();
    }
}

/// Takes a session back to its vocabulary after each text, and deletes the nodes that came since: the pool would keep
/// those of a million texts.
class Cleaner {
public:
    explicit Cleaner(ParsingSession& session)
        : session_(session), vocabulary_(session.factory), nodes_(session.expressionsToDeallocate) {
        for (Expression* node : nodes_) known_.insert(node);
    }

    void Clean(Expression* tree) {
        for (Expression* node : session_.expressionsToDeallocate) Collect(node);
        for (const auto& [name, node] : session_.factory) Collect(node);
        Collect(tree);
        for (Expression* node : doomed_) delete node;
        doomed_.clear();
        session_.factory = vocabulary_;
        session_.expressionsToDeallocate = nodes_;
        session_.doublesToDeallocate.clear();
        session_.stringsToDeallocate.clear();
        std::fill(session_.doubles.begin(), session_.doubles.end(), 0.0);
        std::fill(session_.strings.begin(), session_.strings.end(), "");
    }

private:
    void Collect(Expression* root) {
        std::vector<Expression*> open{root};
        while (!open.empty()) {
            Expression* const node = open.back();
            open.pop_back();
            if (node == nullptr || known_.contains(node) || !doomed_.insert(node).second) continue;
            open.insert(open.end(), node->subExpressions.begin(), node->subExpressions.end());
            if (const auto* function = dynamic_cast<const KM::Parsing::Function*>(node)) open.push_back(function->body);
        }
    }

    ParsingSession& session_;
    std::map<std::string, Expression*> vocabulary_;
    std::vector<Expression*> nodes_;
    std::unordered_set<Expression*> known_;
    std::unordered_set<Expression*> doomed_;
};

void Tokenise(const std::string& text) {
    using namespace KM::Parsing;
    Try([&] { ExtractTokens(text, true); });
    ExtractLines(text);
    const int size = static_cast<int>(text.size());
    for (int position = 0, before = -1; position > before && position < size;) {
        before = position;
        ExtractDouble(text.data(), size, position);
        ExtractString(text.data(), size, position);
    }
}

void Evaluate(Expression& tree) {
    // The way out of the deepest calls is slow, so that one such failure for each text is enough.
    Try([&] {
        tree.ToDouble();
        tree.ToString();
        tree.ToInt();
        tree.EvaluateAsString();
        tree.IsDoubleHolder();
        tree.Set(1.5);
        tree.Set("text");
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ParsingSession& session = *new ParsingSession(4, 4);
    static Cleaner& cleaner = *new Cleaner(session);
    const std::string text(reinterpret_cast<const char*>(data), size);
    Tokenise(text);
    Expression* tree = nullptr;
    if (IsQuick(text)) Try([&] { tree = session.CreateExpression(text); });
    else Try([&] { session.ToPolish(text); });
    if (tree != nullptr) Evaluate(*tree);
    if (session.Link()->depth != 0 || session.currentParameters != nullptr) std::abort();
    cleaner.Clean(tree);
    return 0;
}
