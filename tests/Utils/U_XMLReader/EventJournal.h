#pragma once

#include <string>
#include <utility>

#include "Utils/U_XMLReader/Processor.h"

namespace KM::Test {

/// Keeps each event as text: "<a", "x=1;", ">", "\"value\"", "!comment!", "[cdata]", "?command?", and "/" or "\\" for
/// an end with and without children of its own.
class EventJournal : public XML::Processor {
public:
    std::string journal;

    std::string Take() { return std::exchange(journal, std::string()); }

    void OnElementBegin(const std::string& name) override { journal += "<" + name + " "; }
    void OnElementEnd(bool noChildren) override { journal += noChildren ? "/" : "\\"; }
    void OnAttribute(const std::string& name, const std::string& value) override {
        journal += name + "=" + value + ";";
    }
    void OnAttributesEnd() override { journal += ">"; }
    void OnValue(const std::string& value) override { journal += "\"" + value + "\""; }
    void OnComment(const std::string& text) override { journal += "!" + text + "!"; }
    void OnCDATA(const std::string& text) override { journal += "[" + text + "]"; }
    void OnCommand(const std::string& text) override { journal += "?" + text + "?"; }
};

}  // namespace KM::Test
