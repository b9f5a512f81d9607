#include "Utils/U_XMLReader/CreateElementProcessor.h"

namespace KM::XML {

CreateElementProcessor::CreateElementProcessor(Element& target, bool merge, Element* before, Element* after)
    : target_(target),
      current_(&target),
      before_(before != nullptr ? before : &scratch_),
      after_(after != nullptr ? after : &scratch_),
      merge_(merge) {}

CreateElementProcessor::~CreateElementProcessor() = default;

void CreateElementProcessor::OnElementBegin(const std::string& name) {
    if (!started_) {
        started_ = true;
        target_.N(name);
    } else {
        current_ = merge_ ? &(*current_)[name] : &current_->NewChild(name);
    }
    ++depth_;
}

void CreateElementProcessor::OnElementEnd(bool) {
    --depth_;
    if (current_->P() != nullptr) current_ = current_->P();
}

void CreateElementProcessor::OnAttribute(const std::string& name, const std::string& value) {
    current_->SetAttribute(name, value);
}

void CreateElementProcessor::OnValue(const std::string& value) { current_->V(value); }

void CreateElementProcessor::OnComment(const std::string& text) { AddSpecial(CommentName, text); }

void CreateElementProcessor::OnCDATA(const std::string& text) { AddSpecial(CDATAName, text); }

void CreateElementProcessor::OnCommand(const std::string& text) { AddSpecial(CommandName, text); }

void CreateElementProcessor::AddSpecial(const char* name, const std::string& text) {
    Element* const place = !started_ ? before_ : depth_ != 0 ? current_ : after_;
    place->NewChild(name, text);
}

}  // namespace KM::XML
