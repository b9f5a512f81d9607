#include "Utils/U_Parser/Indexers.h"

#include "Utils/U_Parser/NumberText.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {

ParsingSession& SessionLink::Session() const {
    if (session == nullptr) throw ParsingException("In Session. The session of this expression has ended!", __LINE__);
    return *session;
}

int IndexedExpression::Indexed(std::size_t size) const {
    if (subExpressions.size() != 1)
        throw ParsingException("In Indexed. The indexer has more than one sub expressions registered!", __LINE__);
    const int index = Int(0);
    if (index < 0 || static_cast<std::size_t>(index) >= size)
        throw ParsingException("In Indexed. Index: " + std::to_string(index) + " is out of range!", __LINE__);
    return index;
}

double& DoublesIndexer::Element() const {
    std::vector<double>& doubles = Link().Session().doubles;
    return doubles[static_cast<std::size_t>(Indexed(doubles.size()))];
}

DoublesIndexer* DoublesIndexer::Clone() const { return new DoublesIndexer(*this); }

double DoublesIndexer::ToDouble() const { return Element(); }

void DoublesIndexer::Set(double value) { Element() = value; }

std::string DoublesIndexer::Name() const { return "DoublesIndexer"; }

std::string DoublesIndexer::Help() const { return "Used to index doubles."; }

std::string& StringsIndexer::Element() const {
    std::vector<std::string>& strings = Link().Session().strings;
    return strings[static_cast<std::size_t>(Indexed(strings.size()))];
}

StringsIndexer* StringsIndexer::Clone() const { return new StringsIndexer(*this); }

double StringsIndexer::ToDouble() const { return NumberOf(Element()); }

std::string StringsIndexer::ToString() const { return Element(); }

void StringsIndexer::Set(const std::string& text) { Element() = text; }

std::string StringsIndexer::Name() const { return "StringsIndexer"; }

std::string StringsIndexer::Help() const { return "Used to index strings."; }

Expression& ParametersIndexer::Target() const {
    const ParsingSession::Parameters* const parameters = Link().Session().currentParameters;
    if (parameters == nullptr)
        throw ParsingException("In ParametersIndexer. There are no parameters outside a function!", __LINE__);
    return *(*parameters)[static_cast<std::size_t>(Indexed(parameters->size()))];
}

ParametersIndexer* ParametersIndexer::Clone() const { return new ParametersIndexer(*this); }

ParametersIndexer::Route ParametersIndexer::FindRoute() const { return {&Target(), &Link()}; }

std::string ParametersIndexer::Name() const { return "ParametersIndexer"; }

std::string ParametersIndexer::Help() const { return "Used to index parameters."; }

}  // namespace KM::Parsing
