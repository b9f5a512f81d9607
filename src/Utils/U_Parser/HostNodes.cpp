#include "Utils/U_Parser/HostNodes.h"

#include <atomic>

#include "Utils/U_Parser/NumberText.h"
#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_XMLReader/Element.h"

namespace KM::Parsing {
namespace {

constexpr const char* SetOfConstant = "In XMLValueConst. Try to set an const object!";

std::string WithoutQuotes(const std::string& text) {
    if (!text.starts_with('"')) return text;
    return text.size() < 2 ? "" : text.substr(1, text.size() - 2);
}

}  // namespace

void XMLValueConst::Update() const {
    if (updated_) return;
    updated_ = true;
    if (subExpressions.size() != 1 || element_ == nullptr)
        throw ParsingException("In XMLValue. XMLValue should be called with exactly one parameter!", __LINE__);
    const std::string key = Text(0);
    const XML::Element& setting = (*element_)[key];
    const std::string& type = setting.AttributeValue("Type");
    if (type.empty())
        throw ParsingException("In XMLValue. Found an undefined type when accessing key: " + key + ".", __LINE__);
    isString_ = type == "String";
    text_ = WithoutQuotes(setting.V());
    number_ = NumberOf(text_);
}

XMLValueConst* XMLValueConst::Clone() const { return new XMLValueConst(*this); }

double XMLValueConst::ToDouble() const {
    Update();
    return number_;
}

std::string XMLValueConst::ToString() const {
    Update();
    return text_;
}

bool XMLValueConst::IsDoubleHolder() {
    Update();
    return false;
}

bool XMLValueConst::IsStringHolder() {
    Update();
    return false;
}

void XMLValueConst::Set(const std::string&) { throw ParsingException(SetOfConstant, __LINE__); }

void XMLValueConst::Set(double) { throw ParsingException(SetOfConstant, __LINE__); }

bool XMLValueConst::EvaluateAsString() {
    Update();
    return isString_;
}

std::string XMLValueConst::Name() const { return "XMLValueConst"; }

std::string XMLValueConst::Help() const { return "Used to get XMLValue."; }

WriteLineType* WriteLineType::Clone() const { return new WriteLineType(*this); }

double WriteLineType::ToDouble() const {
    if (!enabled_) return 0.0;
    static std::atomic<bool> isFirstTime = true;
    if (!isFirstTime.exchange(false)) stream_ << "\n";
    stream_ << Text(0);
    return 0.0;
}

std::string WriteLineType::Name() const { return "WriteLineType"; }

std::string WriteLineType::Help() const { return "Used to write a line to a file."; }

}  // namespace KM::Parsing
