#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "KmApi.h"

namespace KM::Parsing {

/// Two numbers have a meaning of their own: 1e20 is automatic (or infinite), -1e20 is invalid. Every number above 1e19
/// counts as automatic, every number not above -1e19 as invalid.
inline constexpr double Automatic = 1e20;
inline constexpr double Invalid = -1e20;
inline constexpr double AutomaticLimit = 1e19;
inline constexpr double InvalidLimit = -1e19;

/// A node of a compiled expression. There is no value type: a node is asked for a number or a text.
///
/// A host adds a function to the language by a class of its own: `Clone`, `Parameters`, `ToDouble`, and `Name` and
/// `Help` for the catalogue; see `ParsingSession::Add`. The virtual operations stand in this order.
///
/// Numbers are evaluated without taking memory. A tree belongs to the thread of its session.
class KM_API Expression {
public:
    /// Operands in the order of the call. Not owned: a node does not destroy them.
    std::vector<Expression*> subExpressions;

    Expression() = default;
    Expression(const Expression& other);
    Expression& operator=(const Expression&) = delete;

    /// A new copy, with the same operands. The compiler clones the registered node for each use of its name.
    virtual Expression* Clone() const = 0;
    virtual ~Expression();
    /// `floor(ToDouble() + 0.5)`; the least int for what fits in none.
    virtual int ToInt() const;
    virtual double ToDouble() const;
    /// The number with six significant digits and a point, as a stream writes it.
    virtual std::string ToString() const;
    /// Whether `Set` takes a number.
    virtual bool IsDoubleHolder();
    /// Whether `Set` takes a text.
    virtual bool IsStringHolder();
    virtual void Set(const std::string& text);
    virtual void Set(double value);
    /// Whether `ToString` is what counts: then comparisons and sums are those of texts.
    virtual bool EvaluateAsString();
    /// How many operands the compiler takes from the stack.
    virtual int Parameters() const;
    /// Binding of an infix operator, lower is tighter; 0 for all that is called.
    virtual int OpPrecedence() const;
    virtual std::string Name() const;
    virtual std::string Help() const;
    /// Called by the compiler as soon as all operands are there. Does nothing here; some nodes look at their operands
    /// here once for all. Who changes operands later calls it again.
    virtual void OnOperands();

    /// Levels of the tree from here on, as far as the compiler has counted them; 1 for a node without operands.
    int Depth() const { return depth_; }

protected:
    /// For a node that is just a number in memory: operators then read it there, without a call. `value` must hold what
    /// `ToDouble` gives, at any time.
    explicit Expression(const double* value) : value_(value), isNumber_(true) {}
    Expression(const Expression& other, const double* value);

    /// Promises that `EvaluateAsString` is false as long as the operands stay; operators then need not ask.
    void BeNumber(bool isNumber = true) { isNumber_ = isNumber; }
    bool IsNumber() const { return isNumber_; }
    bool IsNumber(std::size_t operand) const {
        return operand >= subExpressions.size() || subExpressions[operand]->isNumber_;
    }

    // What operands say. A missing one is invalid, and no text.

    double Value(std::size_t operand) const {
        if (operand >= subExpressions.size()) return Invalid;
        const Expression& expression = *subExpressions[operand];
        return expression.value_ != nullptr ? *expression.value_ : expression.ToDouble();
    }
    int Int(std::size_t operand) const;
    std::string Text(std::size_t operand) const;
    bool IsText(std::size_t operand) const {
        if (operand >= subExpressions.size()) return false;
        Expression& expression = *subExpressions[operand];
        return !expression.isNumber_ && expression.EvaluateAsString();
    }

    /// The shortest way to the number of an operand.
    class Operand {
    public:
        /// To be called in `OnOperands`; without it the way is longer, but right.
        void Find(const Expression& node, std::size_t place) {
            node_ = place < node.subExpressions.size() ? node.subExpressions[place] : nullptr;
            number_ = node_ != nullptr ? node_->value_ : nullptr;
        }
        /// `node` and `place` as in `Find`.
        double Value(const Expression& node, std::size_t place) const {
            if (number_ != nullptr) return *number_;
            return node_ != nullptr ? node_->ToDouble() : node.Value(place);
        }

        /// As far as `Find` could see; false says nothing.
        bool IsPlainNumber() const { return number_ != nullptr; }

    private:
        const double* number_ = nullptr;
        const Expression* node_ = nullptr;
    };

private:
    friend class NodePool;
    friend class Compiler;

    const double* value_ = nullptr;
    std::size_t poolPlace_ = 0;  // behind its place in the pool; 0 outside
    int depth_ = 1;
    bool isNumber_ = false;
};

}  // namespace KM::Parsing
