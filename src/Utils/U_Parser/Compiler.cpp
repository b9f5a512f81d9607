#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "Utils/U_Parser/Blocks.h"
#include "Utils/U_Parser/NodePool.h"
#include "Utils/U_Parser/NumberText.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/Stages.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {
namespace {

// Calls are filled up to the number of parameters that the script itself names, so that memory needs a bound here.
constexpr std::size_t MaxFilled = 1'000'000;

constexpr const char* EmptyBody =
    "The Top of the stack is empty when looking for the number of arguments for a function call! Very probable is an "
    "empty function body that is invalid for function: ";

std::string TextBetweenQuotes(const std::string& token) {
    return token.size() < 2 ? "" : token.substr(1, token.size() - 2);
}

/// The definition that ends with this name, or null.
Function* WithoutBody(Expression* entry) {
    auto* const function = dynamic_cast<Function*>(entry);
    return function != nullptr && function->body == nullptr && function->Name() == "Function" ? function : nullptr;
}

}  // namespace

/// Makes a tree out of a postfix list, with a stack of finished trees.
class Compiler {
public:
    explicit Compiler(ParsingSession& session) : session_(session) {}

    Expression* Compile(const std::vector<Token>& postfix) {
        for (const Token& token : postfix) {
            token_ = &token;
            Take(token.text);
        }
        if (stack_.empty()) return session_.AddToDealloc(Entry("VOID"));
        return stack_.size() == 1 ? stack_[0] : Join(0);
    }

private:
    void Take(const std::string& token) {
        if (token == NewLineMark) ++line_;
        else if (token == CloseMark) CloseBlock();
        else if (IsNumber(token)) stack_.push_back(session_.AddToDealloc(new DoubleConst(NumberOf(token))));
        else if (IsString(token)) stack_.push_back(session_.AddToDealloc(new StringConst(TextBetweenQuotes(token))));
        else if (Expression* const entry = Entry(token); Function* const function = WithoutBody(entry))
            Define(*function);
        else Apply(*entry);
    }

    /// A block of one expression is that expression.
    void CloseBlock() {
        const auto mark = std::find_if(stack_.rbegin(), stack_.rend(), IsMark);
        const auto begin = static_cast<std::size_t>(stack_.rend() - mark);
        const std::size_t count = stack_.size() - begin;
        Expression* const block = count == 0 ? Entry("VOID") : count == 1 ? stack_.back() : Join(begin);
        // Only now: the block of a closing mark without an opening one counts among the expressions too.
        if (mark == stack_.rend())
            Fail("Aren't enough parameters on the stack when trying to process: " + token_->text +
                     " function on line: " + Line(),
                 __LINE__);
        stack_.resize(begin);
        stack_.back() = block;
    }

    static bool IsMark(const Expression* node) { return node->Name() == OpenMark; }

    /// All trees from a place of the stack on, as a block.
    Expression* Join(std::size_t begin) {
        auto* const block = new Agregate;
        session_.AddToDealloc(block);
        block->subExpressions.assign(stack_.begin() + static_cast<std::ptrdiff_t>(begin), stack_.end());
        Finish(*block);
        return block;
    }

    /// The tree on top becomes the body. What stands first in it says how many parameters there are, as of now.
    void Define(Function& function) {
        if (stack_.empty()) Fail(std::string(EmptyBody) + "\"" + token_->text + "\"", __LINE__);
        Expression& body = *stack_.back();
        function.body = &body;
        function.parameterCount = body.subExpressions.empty() ? 0 : body.subExpressions[0]->ToInt();
        stack_.back() = Entry("VOID");
    }

    void Apply(const Expression& entry) {
        Expression* const node = entry.Clone();
        NodePool::Keep(node);
        TakeOperands(*node, static_cast<std::size_t>(std::max(node->Parameters(), 0)));
        stack_.push_back(node);
        Finish(*node);
    }

    void TakeOperands(Expression& node, std::size_t wanted) {
        // What a host registers may have come with operands of its own.
        if (wanted == 0) return;
        const std::size_t begin = stack_.size() - std::min(wanted, stack_.size());
        node.subExpressions.assign(stack_.begin() + static_cast<std::ptrdiff_t>(begin), stack_.end());
        stack_.resize(begin);
        FillUp(node.subExpressions, wanted);
    }

    void FillUp(std::vector<Expression*>& operands, std::size_t wanted) {
        if (operands.size() == wanted) return;
        filled_ += wanted - operands.size();
        if (filled_ > MaxFilled)
            Fail("More than " + std::to_string(MaxFilled) +
                     " operands are missing when trying to process: " + token_->text + " function on line: " + Line(),
                 __LINE__);
        operands.resize(wanted, Entry("INVALID"));
    }

    void Finish(Expression& node) const {
        for (const Expression* operand : node.subExpressions) node.depth_ = std::max(node.depth_, operand->depth_ + 1);
        if (node.depth_ > MaxNesting)
            Fail("The expression is nested deeper than " + std::to_string(MaxNesting) + " levels on line: " + Line(),
                 __LINE__);
        node.OnOperands();
    }

    Expression* Entry(const std::string& name) const {
        const auto entry = session_.factory.find(name);
        if (entry == session_.factory.end()) Fail("Function: " + name + " not defined on line: " + Line(), __LINE__);
        return entry->second;
    }

    std::string Line() const { return std::to_string(line_) + "."; }

    [[noreturn]] void Fail(const std::string& what, unsigned sourceLine) const {
        const std::size_t position = token_ != nullptr ? token_->position : ParsingException::NoPosition;
        throw ParsingException("In Compiler. " + what, sourceLine, position);
    }

    ParsingSession& session_;
    std::vector<Expression*> stack_;
    const Token* token_ = nullptr;
    std::size_t filled_ = 0;  // operands that were missing
    int line_ = 0;
};

Expression* CompileTokens(ParsingSession& session, const std::vector<Token>& postfix) {
    return Compiler(session).Compile(postfix);
}

}  // namespace KM::Parsing
