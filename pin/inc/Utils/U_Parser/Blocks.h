#pragma once

#include <memory>
#include <string>
#include <utility>

#include "Utils/U_Parser/Indexers.h"

namespace KM::Parsing {

/// Statements in their order; the last one is what the block is. Without any it is 0.0, and an empty text.
class KM_API Agregate : public Forwarding<Expression> {
public:
    Agregate* Clone() const override;
    double ToDouble() const override;
    std::string ToString() const override;
    std::string Name() const override;
    std::string Help() const override;

protected:
    Route FindRoute() const override;
};

/// Marks on the stack of the compiler where a block begins.
class KM_API AgregateBegin : public Expression {
public:
    AgregateBegin* Clone() const override;
    std::string Name() const override;
    std::string Help() const override;
};

/// A function of the user, and each call of it: then `subExpressions` are its parameters while `body` is evaluated.
/// @throws ParsingException  when calls are nested too deep
class KM_API Function : public Forwarding<Expression> {
public:
    int parameterCount = -1;     ///< -1 until it is defined
    Expression* body = nullptr;  ///< null until it is defined, then 0.0 is its value; not owned

    explicit Function(std::shared_ptr<SessionLink> link) : link_(std::move(link)) {}

    Function* Clone() const override;
    int Parameters() const override { return parameterCount; }
    std::string Name() const override;
    std::string Help() const override;

protected:
    Route FindRoute() const override;

private:
    std::shared_ptr<SessionLink> link_;
};

}  // namespace KM::Parsing
