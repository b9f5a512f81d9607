#pragma once

#include <string>

#include "KmApi.h"

namespace KM::XML {

/// What a reader, or the walk over a tree (`Dump`), tells about a document, in document order. Each event does nothing
/// here; derive and take those you need. The texts are valid during the call only. What an event throws ends the
/// reading and goes to its caller.
class KM_API Processor {
public:
    Processor() = default;
    Processor(const Processor&) = default;
    Processor& operator=(const Processor&) = default;
    virtual ~Processor();

    /// A start tag has been read up to its name.
    virtual void OnElementBegin(const std::string& name);
    /// @param noChildren  a reader tells how the tag was written, "/>" or "</name>"; `Dump` tells whether there are
    /// none
    virtual void OnElementEnd(bool noChildren);
    virtual void OnAttribute(const std::string& name, const std::string& value);
    /// All attributes have been told. Called by `Dump` only, never by a reader.
    virtual void OnAttributesEnd();
    /// A text of the open element.
    virtual void OnValue(const std::string& value);
    virtual void OnComment(const std::string& text);
    virtual void OnCDATA(const std::string& text);
    /// What stands between "<?" and "?>".
    virtual void OnCommand(const std::string& text);
};

}  // namespace KM::XML
