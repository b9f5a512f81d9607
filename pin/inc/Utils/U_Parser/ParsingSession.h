#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Parser/Indexers.h"

namespace KM::Parsing {

/// One instance of the expression language: its names, its variables, and two arrays of fixed size. Sessions share
/// nothing, but for copies. Variables keep their values from one expression to the next.
///
/// An expression is compiled once (`CreateExpression`) and evaluated as often as one likes, while the session lives.
/// Nodes are never destroyed, except the root in `Execute`: they stay in a pool of the process.
///
/// Failures throw `ParsingException`, a `KmException`. They leave the names that were declared on the way. Nesting has a
/// limit of 10,000 levels, for brackets, for trees, and for calls in evaluation.
///
/// A copy shares the nodes, the functions and the variables: a variable that was known to the original has one value
/// in both. "AUX", "$AUX" and "$P" go on reading the original, and fail when it has ended.
///
/// A session is for one thread.
class KM_API ParsingSession {
public:
    using Parameters = std::vector<Expression*>;

    std::vector<double> doubles;                    ///< "AUX"
    std::vector<std::string> strings;               ///< "$AUX"
    const Parameters* currentParameters = nullptr;  ///< of the function that is being evaluated
    std::map<std::string, Expression*> factory;     ///< what names stand for, in capitals; the catalogue
    std::vector<Expression*> expressionsToDeallocate;
    std::vector<std::string*> stringsToDeallocate;
    std::vector<double*> doublesToDeallocate;

    /// Registers the vocabulary.
    /// @throws ParsingException  for a count below 0 or above 10,000,000
    explicit ParsingSession(int doublesCount = 100, int stringsCount = 100);
    ParsingSession(const ParsingSession& other);
    /// Variables that only this session had stay in memory to the end of the process, for the trees that use them.
    ParsingSession& operator=(const ParsingSession& other);
    /// Frees the variables, unless a copy has them. Expressions that use them must not be evaluated any more.
    ~ParsingSession();

    /// Gives a name to an expression, in any case. A name that exists stays as it was; null does nothing. The
    /// expression must live as long as the session.
    void Add(const std::string& name, Expression* expression);

    /// Leave the object to the session, and return it. An expression is kept to the end of the process, by the pool; it
    /// may be deleted earlier.
    Expression* AddToDealloc(Expression* expression);
    double* AddToDeallocDouble(double* value);
    std::string* AddToDeallocString(std::string* text);

    /// Brings tokens, or a text, into postfix order. An unknown name is declared: as a variable, a number or, with a
    /// "$" ahead, a text; behind "#" as a function.
    std::vector<std::string> ToPolish(const std::vector<std::string>& tokens);
    std::vector<std::string> ToPolish(const std::string& text);

    /// Makes the tree of a postfix list; never null. Missing operands are filled with -1e20.
    Expression* Compile(const std::vector<std::string>& postfix);

    /// `ToPolish`, then `Compile`.
    Expression* CreateExpression(const std::string& text);

    /// Compiles and evaluates. An `Exception` is shown by `DumpErrorMessage`, and the result is then 0.0.
    double Process(const std::string& text);
    /// The same without a handler.
    double Process_(const std::string& text);
    /// Compiles, evaluates, and deletes the root of the tree; the list of expressions can go on naming it, for the count.
    double Execute(const std::string& text);

    /// Compile and evaluate; as a text with six significant digits for a number.
    double ToDouble(const std::string& text);
    std::string ToString(const std::string& text);

    /// For nodes that need their session.
    const std::shared_ptr<SessionLink>& Link() const { return link_; }

private:
    struct Variables;

    void ReportEnd() const;

    std::shared_ptr<SessionLink> link_;
    std::shared_ptr<Variables> variables_;  // shared by copies
};

/// Logs a failure as messages of type `Error`.
/// @param expression  the text that was evaluated; may be empty
KM_API void DumpErrorMessage(const Exception& exception, const std::string& expression);

/// Writes all names, in byte order, to the standard output.
KM_API void DumpFactoryContent(ParsingSession& session);

}  // namespace KM::Parsing
