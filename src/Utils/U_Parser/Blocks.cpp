#include "Utils/U_Parser/Blocks.h"

#include "Utils/U_Parser/Nesting.h"
#include "Utils/U_Parser/Words.h"

namespace KM::Parsing {
namespace {

/// Makes the operands of a call the parameters of the session, until it is over.
class Frame {
public:
    Frame(ParsingSession& session, const ParsingSession::Parameters& parameters)
        : current_(session.currentParameters), before_(current_) {
        current_ = &parameters;
    }
    ~Frame() { current_ = before_; }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

private:
    const ParsingSession::Parameters*& current_;
    const ParsingSession::Parameters* before_;
};

}  // namespace

Agregate* Agregate::Clone() const { return new Agregate(*this); }

double Agregate::ToDouble() const {
    double last = 0.0;
    for (std::size_t i = 0; i < subExpressions.size(); ++i) last = Value(i);
    return last;
}

std::string Agregate::ToString() const {
    std::string last;
    for (const Expression* statement : subExpressions) last = statement->ToString();
    return last;
}

bool Agregate::IsDoubleHolder() { return !subExpressions.empty() && subExpressions.back()->IsDoubleHolder(); }

bool Agregate::IsStringHolder() { return !subExpressions.empty() && subExpressions.back()->IsStringHolder(); }

void Agregate::Set(const std::string& text) {
    if (!subExpressions.empty()) subExpressions.back()->Set(text);
}

void Agregate::Set(double value) {
    if (!subExpressions.empty()) subExpressions.back()->Set(value);
}

bool Agregate::EvaluateAsString() { return !subExpressions.empty() && IsText(subExpressions.size() - 1); }

std::string Agregate::Name() const { return "Agregate"; }

std::string Agregate::Help() const { return "Used to hold an Agregate expression."; }

AgregateBegin* AgregateBegin::Clone() const { return new AgregateBegin(*this); }

std::string AgregateBegin::Name() const { return std::string(OpenMark); }

std::string AgregateBegin::Help() const { return "Used to hold a Open paranthesis."; }

template <class Operation>
auto Function::OnBody(Operation operation) const {
    using Result = decltype(operation(*body));
    if (body == nullptr) return Result();
    const Nesting nesting(*link_, *body);
    const Frame frame(link_->Session(), subExpressions);
    return operation(*body);
}

Function* Function::Clone() const { return new Function(*this); }

double Function::ToDouble() const {
    return OnBody([](const Expression& function) { return function.ToDouble(); });
}

std::string Function::ToString() const {
    // Without a body it is the number that it evaluates to.
    if (body == nullptr) return Expression::ToString();
    return OnBody([](const Expression& function) { return function.ToString(); });
}

bool Function::IsDoubleHolder() {
    return OnBody([](Expression& function) { return function.IsDoubleHolder(); });
}

bool Function::IsStringHolder() {
    return OnBody([](Expression& function) { return function.IsStringHolder(); });
}

void Function::Set(const std::string& text) {
    OnBody([&text](Expression& function) { function.Set(text); });
}

void Function::Set(double value) {
    OnBody([value](Expression& function) { function.Set(value); });
}

bool Function::EvaluateAsString() {
    return OnBody([](Expression& function) { return function.EvaluateAsString(); });
}

std::string Function::Name() const { return "Function"; }

std::string Function::Help() const { return "Used to hold a Function call."; }

}  // namespace KM::Parsing
