#pragma once

#include <exception>
#include <iostream>

#include "Km.h"

namespace KM::Test {

inline void LogToStandardOutput() {
    Application::Services::DumpStream(std::cout);
    Services::GetOutputFormatter();
    Console::IsDumpEnabled(true);
}

/// What came out of the run, as a line and an exit code that no run has.
inline int Left(const char* what) {
    std::cout << "\nleft the run: " << what;
    return 100;
}

/// The `main` of a small tool: runs, and tells what comes out of the run.
inline int ToolMain(int argc, char** argv) {
    LogToStandardOutput();
    Application::Arguments(argc, argv);
    try {
        return Application::Run();
    } catch (const char* text) {
        return Left(text);
    } catch (const std::exception&) {
        return Left("std::exception");
    } catch (const IO::XFileIOError&) {
        return Left("XFileIOError");
    } catch (const XUserAbort&) {
        return Left("XUserAbort");
    }
}

}  // namespace KM::Test
