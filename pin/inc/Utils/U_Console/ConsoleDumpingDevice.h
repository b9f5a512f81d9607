#pragma once

#include <memory>
#include <mutex>
#include <ostream>
#include <string>

#include "Utils/U_Console/DumpingDevice.h"

namespace KM {

namespace Console {
struct Output;
}

/// The device of the text console: writes the text to a stream, and colours it where the stream is a terminal. What was
/// written is kept as the console would hold it, for `DumpAll`.
class KM_API ConsoleDumpingDevice : public DumpingDevice {
public:
    /// @param stream  must outlive the device
    explicit ConsoleDumpingDevice(std::ostream& stream);
    ConsoleDumpingDevice(const ConsoleDumpingDevice&) = delete;
    ConsoleDumpingDevice& operator=(const ConsoleDumpingDevice&) = delete;
    ~ConsoleDumpingDevice() override;

    void SetTitle(const std::string& title) override;
    void FgColorB(int color) override;
    void BkColorB(int color) override;
    void Write(const std::string& text) override;
    /// A line feed comes before a line rather than after it; the first line has none. No other thread writes until
    /// `OnEnd`.
    void OnBegin() override;
    void OnEnd() override;
    /// Writes what the console holds to `file`, behind the style sheet line of "Console.XSLTFormatter". An unwritable
    /// file is left alone. With "Console.ArchiveDumpFile", whatever then has the name is copied by `IO::Archive`.
    void DumpAll(const std::string& file) override;
    void Reset() override;
    void ApplyBackground() override;

private:
    std::unique_ptr<Console::Output> output_;
    std::recursive_mutex line_;
};

}  // namespace KM
