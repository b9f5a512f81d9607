#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "Utils/U_Parser/Expression.h"
#include "Utils/U_Parser/Forwarding.h"

namespace KM::Parsing {

class ParsingSession;

/// What nodes hold instead of their session, since they outlive it.
struct KM_API SessionLink {
    ParsingSession* session;  ///< null when it has ended
    int depth = 0;            ///< levels of the trees that calls have entered

    /// @throws ParsingException  if the session has ended
    ParsingSession& Session() const;
};

/// An element of an array, "NAME[index]": the operand rounded to the nearest int.
class KM_API IndexedExpression : public Expression {
public:
    int Parameters() const override { return 1; }

protected:
    explicit IndexedExpression(std::shared_ptr<SessionLink> link) : link_(std::move(link)) {}

    /// The index. Does not fail while it lies below `size`.
    /// @throws ParsingException  without exactly one operand, or for an index outside 0 ... `size` - 1
    int Indexed(std::size_t size) const;
    SessionLink& Link() const { return *link_; }

private:
    std::shared_ptr<SessionLink> link_;
};

extern template class Forwarding<IndexedExpression>;

/// "AUX[i]": a number of the session.
class KM_API DoublesIndexer : public IndexedExpression {
public:
    explicit DoublesIndexer(std::shared_ptr<SessionLink> link) : IndexedExpression(std::move(link)) { BeNumber(); }

    DoublesIndexer* Clone() const override;
    double ToDouble() const override;
    bool IsDoubleHolder() override { return true; }
    using Expression::Set;
    void Set(double value) override;
    std::string Name() const override;
    std::string Help() const override;

private:
    double& Element() const;
};

/// "$AUX[i]": a text of the session.
class KM_API StringsIndexer : public IndexedExpression {
public:
    explicit StringsIndexer(std::shared_ptr<SessionLink> link) : IndexedExpression(std::move(link)) {}

    StringsIndexer* Clone() const override;
    double ToDouble() const override;
    std::string ToString() const override;
    bool IsStringHolder() override { return true; }
    using Expression::Set;
    void Set(const std::string& text) override;
    bool EvaluateAsString() override { return true; }
    std::string Name() const override;
    std::string Help() const override;

private:
    std::string& Element() const;
};

/// "$P[i]": the operand of the present call. It is passed by name: each use evaluates it again, inside the called
/// function, and an assignment goes through to it.
/// @throws ParsingException  from each operation outside a function
class KM_API ParametersIndexer : public Forwarding<IndexedExpression> {
public:
    explicit ParametersIndexer(std::shared_ptr<SessionLink> link) : Forwarding(std::move(link)) {}

    ParametersIndexer* Clone() const override;
    std::string Name() const override;
    std::string Help() const override;

protected:
    Route FindRoute() const override;

private:
    Expression& Target() const;
};

}  // namespace KM::Parsing
