#pragma once

#include <string>
#include <vector>

#include "Utils/U_Parser/Expression.h"

namespace KM::Parsing {

struct SessionLink;

/// A node that stands for another one: whatever it is asked, that one answers. What has a value of its own overrides
/// `ToDouble` and `ToString`.
/// @tparam Base  `Expression` or `IndexedExpression`
template <class Base>
class KM_API Forwarding : public Base {
public:
    double ToDouble() const override;
    std::string ToString() const override;
    bool IsDoubleHolder() override;
    bool IsStringHolder() override;
    void Set(const std::string& text) override;
    void Set(double value) override;
    bool EvaluateAsString() override;

protected:
    using Base::Base;

    /// The way to the node that answers. `link` counts the levels behind it, and is null inside one tree, which the
    /// compiler has counted as a whole.
    struct Route {
        Expression* target = nullptr;                          ///< null: none, and the answer is that of `Void`
        SessionLink* link = nullptr;                           ///< needed with `parameters`
        const std::vector<Expression*>* parameters = nullptr;  ///< of the session meanwhile; null leaves them
    };
    /// Once for each operation.
    virtual Route FindRoute() const = 0;

private:
    template <class Operation>
    auto OnTarget(Operation operation) const;
};

extern template class Forwarding<Expression>;

}  // namespace KM::Parsing
