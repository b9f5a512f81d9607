#pragma once

#include "Utils/U_App/Services.h"

namespace KM {

/// The trace line for an edge that cannot be made, whichever way it was asked for.
inline void ReportNonExistentNode() {
    Application::Services::DumpStream() << "PIN.AddEdge: Can't create edge between non-existent nodes";
}

}  // namespace KM
