#include <string>
#include <vector>

#include "Utils/U_Parser/Blocks.h"
#include "Utils/U_Parser/NodePool.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/Stages.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {
namespace {

enum class Kind { NewLine, Number, Opening, Operator, Closing, Separator, Name };

Kind KindOf(const std::string& token) {
    if (token == NewLineMark) return Kind::NewLine;
    if (IsNumber(token)) return Kind::Number;
    if (token == "(" || token == "[" || token == "{") return Kind::Opening;
    if (IsOperator(token)) return Kind::Operator;
    if (token == ")" || token == "]" || token == "}") return Kind::Closing;
    if (token == "," || token == ";") return Kind::Separator;
    return Kind::Name;
}

bool AreAPair(char opening, char closing) {
    return (opening == '(' && closing == ')') || (opening == '[' && closing == ']') ||
           (opening == '{' && closing == '}');
}

/// One pass with a stack of operators. Names go on that stack as well, whatever they stand for, and come off at the next
/// operator, separator or closing bracket: so a function follows its operands, and two names with nothing between them
/// change places. A string literal counts as a name here, and is declared as one: hosts compare the counts of
/// variables.
class InfixToPostfix {
public:
    explicit InfixToPostfix(ParsingSession& session) : session_(session) {}

    std::vector<Token> Convert(const std::vector<Token>& tokens) {
        for (const Token& token : tokens) Take(token);
        while (!stack_.empty()) {
            const Token& top = stack_.back().token;
            if (stack_.back().kind == Kind::Opening)
                Fail("Found orphan opening paranthesis of type: \"" + top.text + "\" on line: " + Line(), __LINE__,
                     top);
            Pop();
        }
        return std::move(output_);
    }

private:
    struct Waiting {
        Token token;
        Kind kind;
    };

    void Take(const Token& token) {
        switch (const Kind kind = KindOf(token.text)) {
            case Kind::NewLine:
                ++line_;
                output_.push_back(token);
                break;
            case Kind::Number:
                output_.push_back(token);
                break;
            case Kind::Opening:
                Open(token);
                break;
            case Kind::Operator:
                Bind(token);
                break;
            case Kind::Closing:
            case Kind::Separator:
                while (!stack_.empty() && stack_.back().kind != Kind::Opening) Pop();
                if (kind == Kind::Closing) Close(token);
                break;
            case Kind::Name:
                Name(token);
                break;
        }
    }

    void Open(const Token& token) {
        if (++openBrackets_ > MaxNesting)
            Fail("Brackets are nested deeper than " + std::to_string(MaxNesting) + " levels on line: " + Line(),
                 __LINE__, token);
        stack_.push_back({token, Kind::Opening});
        if (token.text == "{") output_.push_back({std::string(OpenMark), token.position});
    }

    /// Equal precedence leaves the stack: all operators are left-associative, assignments too.
    void Bind(const Token& token) {
        while (!stack_.empty() && stack_.back().kind != Kind::Opening) {
            const Waiting& top = stack_.back();
            if (top.kind == Kind::Operator && OperatorPriority(token) < OperatorPriority(top.token)) break;
            Pop();
        }
        stack_.push_back({token, Kind::Operator});
    }

    void Close(const Token& token) {
        if (stack_.empty())
            Fail("Found orphan closing paranthesis of type: \"" + token.text + "\" on line: " + Line(), __LINE__,
                 token);
        if (!AreAPair(stack_.back().token.text[0], token.text[0]))
            Fail("Found diferent type of closing paranthesis on line: " + Line(), __LINE__, token);
        stack_.pop_back();
        --openBrackets_;
        if (token.text == "}") output_.push_back({std::string(CloseMark), token.position});
        // The function that the brackets belong to.
        if (!stack_.empty() && stack_.back().kind == Kind::Name) Pop();
    }

    void Name(const Token& token) {
        const bool isDefinition = token.text[0] == '#';
        if (isDefinition && !stack_.empty())
            Fail("Nested function definitions. Very probable you forgot some open paranthesis on line: " + Line(),
                 __LINE__, token);
        const Token name{isDefinition ? token.text.substr(1) : token.text, token.position};
        const bool isKnown = session_.factory.contains(name.text);
        if (isKnown && isDefinition)
            Fail("Found multiple definitions for: " + name.text +
                     ". Function overloading isn't supported! On line: " + Line(),
                 __LINE__, token);
        if (!isKnown) Declare(name.text, isDefinition);
        stack_.push_back({name, Kind::Name});
    }

    void Declare(const std::string& name, bool isDefinition) {
        session_.Add(name, isDefinition ? NodePool::Make<Function>(session_.Link()) : NewVariable(name));
    }

    Expression* NewVariable(const std::string& name) {
        if (name.starts_with('$'))
            return session_.AddToDealloc(new StringChanger(session_.AddToDeallocString(new std::string)));
        return session_.AddToDealloc(new DoubleChanger(session_.AddToDeallocDouble(new double(0.0))));
    }

    int OperatorPriority(const Token& token) const {
        const auto entry = session_.factory.find(token.text);
        if (entry == session_.factory.end())
            throw ParsingException("In OperatorPriority. Operator: " + token.text + " Not Found!", __LINE__,
                                   token.position);
        const int precedence = entry->second->OpPrecedence();
        if (precedence == 0)
            throw ParsingException("In OperatorPriority. Wrong operator precedence for: " + token.text + " operator!",
                                   __LINE__, token.position);
        return precedence;
    }

    void Pop() {
        output_.push_back(std::move(stack_.back().token));
        stack_.pop_back();
    }

    std::string Line() const { return std::to_string(line_) + "."; }

    [[noreturn]] static void Fail(const std::string& what, unsigned sourceLine, const Token& token) {
        throw ParsingException("In ToPostFixConverter. " + what, sourceLine, token.position);
    }

    ParsingSession& session_;
    std::vector<Waiting> stack_;
    std::vector<Token> output_;
    int openBrackets_ = 0;
    int line_ = 0;
};

}  // namespace

std::vector<Token> ToPostfix(ParsingSession& session, const std::vector<Token>& tokens) {
    return InfixToPostfix(session).Convert(tokens);
}

}  // namespace KM::Parsing
