#include "Utils/U_Parser/Values.h"

#include <utility>

#include "Utils/U_Parser/NumberText.h"

namespace KM::Parsing {

DoubleConst::DoubleConst(double value) : Expression(&number_), number_(value) {}

DoubleConst::DoubleConst(const DoubleConst& other) : Expression(other, &number_), number_(other.number_) {}

DoubleConst* DoubleConst::Clone() const { return new DoubleConst(*this); }

std::string DoubleConst::Name() const { return "DoubleConst"; }

std::string DoubleConst::Help() const { return "Used to wrap a constant double."; }

StringConst::StringConst(std::string text) : text_(std::move(text)) {}

StringConst* StringConst::Clone() const { return new StringConst(*this); }

double StringConst::ToDouble() const { return NumberOf(text_); }

std::string StringConst::Name() const { return "StringConst"; }

std::string StringConst::Help() const { return "Used to wrap a constant string."; }

DoubleChanger* DoubleChanger::Clone() const { return new DoubleChanger(*this); }

std::string DoubleChanger::Name() const { return "DoubleChanger"; }

std::string DoubleChanger::Help() const { return "Used to wrap a double changer."; }

StringChanger* StringChanger::Clone() const { return new StringChanger(*this); }

double StringChanger::ToDouble() const { return NumberOf(*target_); }

std::string StringChanger::Name() const { return "StringChanger"; }

std::string StringChanger::Help() const { return "Used to wrap a string changer."; }

Void* Void::Clone() const { return new Void(*this); }

std::string Void::Name() const { return "Void"; }

}  // namespace KM::Parsing
