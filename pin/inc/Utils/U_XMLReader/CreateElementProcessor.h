#pragma once

#include <string>

#include "KmApi.h"
#include "Utils/U_XMLReader/Element.h"
#include "Utils/U_XMLReader/Processor.h"

namespace KM::XML {

/// Builds a tree from events, or merges them into one that stands. The root of the text is the target itself, which
/// takes its name. Comments, CDATA sections and commands become elements named `CommentName`, `CDATAName` and
/// `CommandName`.
class KM_API CreateElementProcessor : public Processor {
public:
    /// @param target  outlives the processor, as `before` and `after` do
    /// @param merge   start tags go to the child that the index finds under their name, and make one only if there is
    ///                none; else each makes a new child
    /// @param before  gets comments, CDATA sections and commands ahead of the root; null drops them
    /// @param after   the same for those behind the root
    ///
    /// Tags are not matched. An end tag too many goes up to the parent of the target, if it has one.
    CreateElementProcessor(Element& target, bool merge, Element* before, Element* after);
    CreateElementProcessor(const CreateElementProcessor&) = delete;
    CreateElementProcessor& operator=(const CreateElementProcessor&) = delete;
    ~CreateElementProcessor() override;

    void OnElementBegin(const std::string& name) override;
    void OnElementEnd(bool noChildren) override;
    /// Sets the attribute, in place of one of the same name.
    void OnAttribute(const std::string& name, const std::string& value) override;
    /// Sets the value, in place of the one before; a new one is stamped with the current session.
    void OnValue(const std::string& value) override;
    void OnComment(const std::string& text) override;
    void OnCDATA(const std::string& text) override;
    void OnCommand(const std::string& text) override;

private:
    void AddSpecial(const char* name, const std::string& text);

    int depth_ = 0;
    bool started_ = false;
    Element scratch_{""};  // in the place of a missing `before` or `after`
    Element& target_;
    Element* current_;
    Element* before_;
    Element* after_;
    bool merge_;
};

}  // namespace KM::XML
