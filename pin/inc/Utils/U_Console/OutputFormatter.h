#pragma once

#include <string>

#include "KmApi.h"

namespace KM {

/// Supplies the marks round a line of the log, as text with mark-up codes (see `DumpingDevice`). The plain class gives
/// empty texts; the virtual operations stand in this order.
class KM_API OutputFormatter {
public:
    OutputFormatter() = default;
    OutputFormatter(const OutputFormatter&) = default;
    OutputFormatter& operator=(const OutputFormatter&) = default;
    virtual ~OutputFormatter();

    /// The formatter takes over, or the device starts afresh.
    virtual void OnInit();
    virtual void OnClose();
    /// Texts for hosts that write a document of their own; the log does not use them.
    virtual std::string Header();
    virtual std::string Footer();
    /// For hosts; the log does not use it.
    virtual bool HasNoLabels();
    virtual std::string OpenMarkStart();
    virtual std::string OpenMarkEnd();
    /// True when the label of an opening mark is to stay uncoloured.
    virtual bool IsOpenLabelPlain();
    virtual std::string CloseMarkStart();
    virtual std::string CloseMarkEnd();
    /// True when the label of a closing mark is to stay uncoloured.
    virtual bool IsCloseLabelPlain();
    virtual std::string OpenLabelStyleStart();
    virtual std::string OpenLabelStyleEnd();
    virtual std::string CloseLabelStyleStart();
    virtual std::string CloseLabelStyleEnd();
};

/// Writes labels in bold.
class KM_API OutputFormatterBoldLabel : public OutputFormatter {
public:
    std::string OpenLabelStyleStart() override;
    std::string OpenLabelStyleEnd() override;
    std::string CloseLabelStyleStart() override;
    std::string CloseLabelStyleEnd() override;
};

/// Makes the log an XML text: `<Info>text</Info>`. The default.
class KM_API XMLFormatter : public OutputFormatterBoldLabel {
public:
    std::string OpenMarkStart() override;
    std::string OpenMarkEnd() override;
    std::string CloseMarkStart() override;
    std::string CloseMarkEnd() override;
};

}  // namespace KM
