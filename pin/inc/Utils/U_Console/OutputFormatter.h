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
    virtual std::string Header() const;
    virtual std::string Footer() const;
    /// For hosts; the log does not use it.
    virtual bool HasNoLabels() const;
    virtual std::string OpenMarkStart() const;
    virtual std::string OpenMarkEnd() const;
    /// True when the label of an opening mark is to stay uncoloured.
    virtual bool IsOpenLabelPlain() const;
    virtual std::string CloseMarkStart() const;
    virtual std::string CloseMarkEnd() const;
    /// True when the label of a closing mark is to stay uncoloured.
    virtual bool IsCloseLabelPlain() const;
    virtual std::string OpenLabelStyleStart() const;
    virtual std::string OpenLabelStyleEnd() const;
    virtual std::string CloseLabelStyleStart() const;
    virtual std::string CloseLabelStyleEnd() const;
};

/// Writes labels in bold.
class KM_API OutputFormatterBoldLabel : public OutputFormatter {
public:
    std::string OpenLabelStyleStart() const override;
    std::string OpenLabelStyleEnd() const override;
    std::string CloseLabelStyleStart() const override;
    std::string CloseLabelStyleEnd() const override;
};

/// Makes the log an XML text: `<Info>text</Info>`. The default.
class KM_API XMLFormatter : public OutputFormatterBoldLabel {
public:
    std::string OpenMarkStart() const override;
    std::string OpenMarkEnd() const override;
    std::string CloseMarkStart() const override;
    std::string CloseMarkEnd() const override;
};

}  // namespace KM
