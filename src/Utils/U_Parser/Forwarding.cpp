#include "Utils/U_Parser/Forwarding.h"

#include <utility>

#include "Utils/U_Parser/Indexers.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/Stages.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {
namespace {

/// Inside a target, as long as it lives: the levels of its tree are counted, and `parameters` are those of the session.
class Visit {
public:
    Visit(const Expression& target, SessionLink* link, const ParsingSession::Parameters* parameters)
        : link_(link),
          levels_(link != nullptr ? target.Depth() : 0),
          current_(parameters != nullptr ? &link->Session().currentParameters : nullptr) {
        if (link_ != nullptr) Enter();
        if (current_ != nullptr) before_ = std::exchange(*current_, parameters);
    }
    ~Visit() {
        if (current_ != nullptr) *current_ = before_;
        if (link_ != nullptr) link_->depth -= levels_;
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

private:
    void Enter() {
        if (link_->depth + levels_ > MaxNesting)
            throw ParsingException(
                "In Function. Calls and parameters are nested deeper than " + std::to_string(MaxNesting) + " levels!",
                __LINE__);
        link_->depth += levels_;
    }

    SessionLink* link_;
    int levels_;
    const ParsingSession::Parameters** current_;
    const ParsingSession::Parameters* before_ = nullptr;
};

Expression& Nothing() {
    static Void nothing;
    return nothing;
}

}  // namespace

template <class Base>
template <class Operation>
auto Forwarding<Base>::OnTarget(Operation operation) const {
    const Route route = FindRoute();
    if (route.target == nullptr) return operation(Nothing());
    const Visit visit(*route.target, route.link, route.parameters);
    return operation(*route.target);
}

template <class Base>
double Forwarding<Base>::ToDouble() const {
    return OnTarget([](const Expression& target) { return target.ToDouble(); });
}

template <class Base>
std::string Forwarding<Base>::ToString() const {
    return OnTarget([](const Expression& target) { return target.ToString(); });
}

template <class Base>
bool Forwarding<Base>::IsDoubleHolder() {
    return OnTarget([](Expression& target) { return target.IsDoubleHolder(); });
}

template <class Base>
bool Forwarding<Base>::IsStringHolder() {
    return OnTarget([](Expression& target) { return target.IsStringHolder(); });
}

template <class Base>
void Forwarding<Base>::Set(const std::string& text) {
    OnTarget([&text](Expression& target) { target.Set(text); });
}

template <class Base>
void Forwarding<Base>::Set(double value) {
    OnTarget([value](Expression& target) { target.Set(value); });
}

template <class Base>
bool Forwarding<Base>::EvaluateAsString() {
    return OnTarget([](Expression& target) { return target.EvaluateAsString(); });
}

template class Forwarding<Expression>;
template class Forwarding<IndexedExpression>;

}  // namespace KM::Parsing
