#include "Utils/U_XMLReader/Nodes.h"

#include "Utils/U_XMLReader/Session.h"
#include "Utils/U_XMLReader/UnlinkedNodes.h"

namespace KM::XML {

Base::Base(const std::string& name, const std::string& value, Element* parent)
    : name_(name), value_(value), parent_(parent), session_(GetSettingSession()) {}

Base::Base(const Base& source)
    : name_(source.name_), value_(source.value_), parent_(source.parent_), session_(source.session_) {}

Base& Base::operator=(const Base& source) {
    hasOtherKey_ = true;
    name_ = source.name_;
    value_ = source.value_;
    parent_ = source.parent_;
    session_ = source.session_;
    return *this;
}

Base::~Base() {
    if (isUnlinked_) UnlinkedNodes::Forget(*this);
}

void Base::N(const std::string& name) {
    hasOtherKey_ = true;
    name_ = name;
}

const std::string& Base::N() const { return name_; }

std::string& Base::VAddress() { return value_; }

void Base::V(const std::string& value) {
    if (value == value_) return;
    value_ = value;
    session_ |= GetSettingSession();
}

const std::string& Base::V() const { return value_; }

Element* Base::P() { return parent_; }

const Element* Base::P() const { return parent_; }

int Base::SettingSession() const { return session_; }

void Base::SettingSession(int session) { session_ = session; }

Attribute::Attribute(const std::string& name, const std::string& value, Element* parent) : Base(name, value, parent) {}

Attribute* Attribute::Clone() const { return new Attribute(*this); }

void Attribute::N(const std::string& name) {
    if (P() != nullptr) throw XParrentNotFound();
    Base::N(name);
}

Comment::Comment(const std::string& text, Element* parent) : Base(CommentName, text, parent) {}

Comment::Comment(const std::string& name, const std::string& text, Element* parent) : Base(name, text, parent) {}

Comment* Comment::Clone() const { return new Comment(*this); }

CDATA::CDATA(const std::string& text, Element* parent) : Base(CDATAName, text, parent) {}

CDATA::CDATA(const std::string& name, const std::string& text, Element* parent) : Base(name, text, parent) {}

CDATA* CDATA::Clone() const { return new CDATA(*this); }

}  // namespace KM::XML
