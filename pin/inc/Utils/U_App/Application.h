#pragma once

#include <string>

#include "KmApi.h"
#include "Utils/U_App/Arguments.h"

/// The run of a tool from its command line to its exit code. A `main` is this:
///
///     int main(int argc, char** argv) {
///         KM::Application::Arguments(argc, argv);
///         return KM::Application::Run();
///     }
///
/// State of the process, written on the main thread before an action starts.
namespace KM::Application {

/// Takes over the command line, in place of what was there.
///
/// An argument that begins with a double quote opens a quoted run: those behind it are appended, with nothing between,
/// up to and with the first that ends in a double quote; that can be the opening one. The quotes stay. A run that is
/// never closed goes to the end. Of exactly five arguments, the fifth is also the number of the host's window, which is
/// then told of the progress.
///
/// @param argc  of `argv`; a null in `argv` ends it earlier, and without `argv` there are none
KM_API void Arguments(int argc, char** const argv);

/// Runs the tool as its arguments say, and returns the exit code. Once per process.
///
/// An action named "Main" takes it all: it is run, and the result is 0. Without an argument the usage is logged. The
/// switches "/C", "/P", "/V" and "/T" do what the usage says. Otherwise all XML files on the command line are read into
/// the settings, in their order, the services are configured, and the action that "Actions.Execute" names is run.
///
/// Whatever that action throws becomes an exit code, see "Descriptors.ReturnCodes". What is thrown before or behind it
/// passes through, for the `main` to catch: a broken configuration ("Bad XML File" or `std::length_error`, see
/// Reader.h), a file that cannot be read or written (`IO::XFileIOError`), and `XUserAbort`.
KM_API int Run();

/// What `Run` returns: 0 at its start, changed by the action or by how it ends.
KM_API int ExitCode();
KM_API void ExitCode(int code);

/// Short name and version of the action that was run last; empty before.
KM_API std::string Name();
KM_API void Name(const std::string& name);

/// The folder of argument 0, with its last separator; empty if it has none.
KM_API std::string GetEXEFilePath();

/// By what the library was made, as texts for people: "RN190". The letters are told by `CompilationExplanation`.
KM_API std::string GetGenericVersionInfo();

/// Logs what the version info means.
KM_API void CompilationExplanation();

}  // namespace KM::Application
