#pragma once

#include "KmApi.h"
#include "Utils/U_Console/DumpingDevice.h"
#include "Utils/U_Console/OutputFormatter.h"

namespace KM {

/// The two exchangeable objects through which the log leaves the process. Pointers are not owned and must outlive their
/// use; null puts the default back in place at the next call.
class KM_API Services {
public:
    /// The device set before, or a console device on the dump stream, made once and kept to the end of the process.
    static DumpingDevice* GetDumpingDevice();
    static void SetDumpingDevice(DumpingDevice* device);

    /// The formatter set before, or the `XMLFormatter` of the process, which is then set. Nothing is logged before one
    /// of these two calls has set a formatter.
    static OutputFormatter* GetOutputFormatter();
    /// When a formatter replaces another one, the log is drawn again through it.
    static void SetOutputFormatter(OutputFormatter* formatter);

    /// True once a formatter has been set; makes none.
    static bool HasOutputFormatter();
};

}  // namespace KM
