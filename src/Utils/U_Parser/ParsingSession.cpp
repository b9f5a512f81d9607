#include "Utils/U_Parser/ParsingSession.h"

#include <algorithm>
#include <iostream>

#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_Parser/Catalogue.h"
#include "Utils/U_Parser/NodePool.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/Stages.h"

namespace KM::Parsing {
namespace {

constexpr int MaxElements = 10'000'000;

std::size_t Checked(int count) {
    if (count < 0 || count > MaxElements)
        throw ParsingException("In ParsingSession. An array can't have " + std::to_string(count) + " elements!",
                               __LINE__);
    return static_cast<std::size_t>(count);
}

/// Somebody can have left an object twice.
template <class Object>
void DeleteEach(std::vector<Object*>& objects) {
    std::sort(objects.begin(), objects.end());
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
    for (const Object* object : objects) delete object;
}

std::vector<Token> WithoutPositions(const std::vector<std::string>& texts) {
    std::vector<Token> tokens;
    for (const std::string& text : texts) tokens.push_back({text, ParsingException::NoPosition});
    return tokens;
}

std::vector<std::string> TextsOf(std::vector<Token> tokens) {
    std::vector<std::string> texts;
    for (Token& token : tokens) texts.push_back(std::move(token.text));
    return texts;
}

}  // namespace

/// What copies have in common.
struct ParsingSession::Variables {
    std::vector<double*> doubles;
    std::vector<std::string*> strings;

    Variables() = default;
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;
    ~Variables() {
        DeleteEach(doubles);
        DeleteEach(strings);
    }
};

ParsingSession::ParsingSession(int doublesCount, int stringsCount)
    : doubles(Checked(doublesCount)),
      strings(Checked(stringsCount)),
      link_(std::make_shared<SessionLink>(SessionLink{this})),
      variables_(std::make_shared<Variables>()) {
    RegisterCatalogue(*this);
}

ParsingSession::ParsingSession(const ParsingSession& other)
    : doubles(other.doubles),
      strings(other.strings),
      currentParameters(other.currentParameters),
      factory(other.factory),
      expressionsToDeallocate(other.expressionsToDeallocate),
      stringsToDeallocate(other.stringsToDeallocate),
      doublesToDeallocate(other.doublesToDeallocate),
      link_(std::make_shared<SessionLink>(SessionLink{this})),
      variables_(other.variables_) {}

ParsingSession& ParsingSession::operator=(const ParsingSession& other) {
    doubles = other.doubles;
    strings = other.strings;
    currentParameters = other.currentParameters;
    factory = other.factory;
    expressionsToDeallocate = other.expressionsToDeallocate;
    stringsToDeallocate = other.stringsToDeallocate;
    doublesToDeallocate = other.doublesToDeallocate;
    if (variables_ != other.variables_) NodePool::KeepTargets(variables_);
    variables_ = other.variables_;
    return *this;
}

ParsingSession::~ParsingSession() {
    try {
        const Verbose::Scope scope("ParsingSession.Destroy");
        ReportEnd();
    } catch (...) {
        // A message is where the user can stop a computation; a destructor goes on.
    }
    link_->session = nullptr;
}

void ParsingSession::ReportEnd() const {
    const auto report = [](std::size_t count, const char* what) {
        Verbose::WriteMessage_1(Verbose::EMessageType::Info, "Destroy: " + std::to_string(count) + what);
    };
    report(expressionsToDeallocate.size(), " expressions;");
    report(stringsToDeallocate.size(), " strings;");
    report(doublesToDeallocate.size(), " doubles;");
}

void ParsingSession::Add(const std::string& name, Expression* expression) {
    if (expression == nullptr) return;
    std::string key = name;
    ToUpper(key);
    factory.emplace(std::move(key), expression);
}

Expression* ParsingSession::AddToDealloc(Expression* expression) {
    NodePool::Keep(expression);
    expressionsToDeallocate.push_back(expression);
    return expression;
}

double* ParsingSession::AddToDeallocDouble(double* value) {
    variables_->doubles.push_back(value);
    doublesToDeallocate.push_back(value);
    return value;
}

std::string* ParsingSession::AddToDeallocString(std::string* text) {
    variables_->strings.push_back(text);
    stringsToDeallocate.push_back(text);
    return text;
}

std::vector<std::string> ParsingSession::ToPolish(const std::vector<std::string>& tokens) {
    return TextsOf(ToPostfix(*this, WithoutPositions(tokens)));
}

std::vector<std::string> ParsingSession::ToPolish(const std::string& text) {
    return TextsOf(ToPostfix(*this, CutTokens(text, false)));
}

Expression* ParsingSession::Compile(const std::vector<std::string>& postfix) {
    return CompileTokens(*this, WithoutPositions(postfix));
}

Expression* ParsingSession::CreateExpression(const std::string& text) {
    return CompileTokens(*this, ToPostfix(*this, CutTokens(text, false)));
}

double ParsingSession::Process(const std::string& text) {
    try {
        return Process_(text);
    } catch (const Exception& exception) {
        DumpErrorMessage(exception, text);
    }
    return 0.0;
}

double ParsingSession::Process_(const std::string& text) { return AddToDealloc(CreateExpression(text))->ToDouble(); }

double ParsingSession::Execute(const std::string& text) {
    Expression* const root = CreateExpression(text);
    const double value = root->ToDouble();
    // What has no value is a node of the table, and other trees use it too.
    const auto nothing = factory.find("VOID");
    if (nothing == factory.end() || root != nothing->second) delete root;
    return value;
}

double ParsingSession::ToDouble(const std::string& text) { return CreateExpression(text)->ToDouble(); }

std::string ParsingSession::ToString(const std::string& text) { return CreateExpression(text)->ToString(); }

void DumpErrorMessage(const Exception& exception, const std::string& expression) {
    const auto write = [](const std::string& text) { Verbose::WriteMessage_1(Verbose::EMessageType::Error, text); };
    const std::string rule = "\n==========================================";
    const std::string yellow = "`C14`";
    write(rule);
    write("\nException detected! The Info is:");
    if (!expression.empty()) write("\nExpression    : " + yellow + expression);
    write("\nException Type: \"" + yellow + exception.type + yellow + "\"");
    write("\nException File: \"" + yellow + exception.file + yellow + "\"");
    write("\nException Line: " + yellow + std::to_string(exception.line));
    write(rule);
}

void DumpFactoryContent(ParsingSession& session) {
    std::cout << "\nFactory{";
    for (const auto& [key, expression] : session.factory)
        std::cout << "\n  Key = " << key << ", Name = " << expression->Name()
                  << ", OpP = " << expression->OpPrecedence();
    std::cout << "\n}//Factory" << std::flush;
}

}  // namespace KM::Parsing
