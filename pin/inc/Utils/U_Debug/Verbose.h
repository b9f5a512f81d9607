#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "KmApi.h"
#include "Utils/U_Debug/Objects.h"

namespace KM {

/// The one log of the system: a structured text in which each record is an element, `<Info>text</Info>`, nested in the
/// scopes that are open. A scope leaves no trace unless something was logged inside it. Every record is kept in memory,
/// so that the log can be drawn again on another device or in another format.
///
/// Nothing is logged until output is enabled (`Console::IsDumpEnabled(true)`) and a formatter is set (`KM::Services`).
/// One thread at a time.
namespace Verbose {

/// The kinds of message, most urgent first. As a level, a value lets through itself and what stands before it. Any
/// `int` is taken: one below 0 as a level silences all, a message of a kind without a name has no marks.
class KM_API EMessageType : public Enums {
public:
    enum iterator : int { None, System, Error, Warning, Info, Note, All };

    /// "None", "System" and so on; an empty text for any other number.
    static std::string Name(iterator type);
};

/// One line of the log as it was given, before formatting.
struct LogRecord {
    std::string label;    ///< element name: of a message type, of a scope, "Time", or empty
    std::string message;  ///< the text; may hold mark-up codes
    std::string link;     ///< a target such as a file path, or empty
    int linkColor = 0;
    bool begin = false;  ///< write the opening mark
    bool end = false;    ///< write the closing mark
};

/// Marks the span of an operation. Scopes are strictly nested: make them on the stack. One that closes takes the
/// innermost entry off the stack of scopes, whoever it belongs to.
class KM_API Scope {
public:
    explicit Scope(const std::string& name);
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    /// Closes the scope; an exception on the way ends the process.
    virtual ~Scope();

    /// Closes the scope now, with its time in seconds if it has been shown. A second call does nothing.
    void Unrole();
    /// Marks the variable as used.
    void Dummy();

    const std::string& Name() const { return name_; }

private:
    double startTime_;
    double dummyTime_ = 0.0;
    std::string name_;
    bool closed_ = false;
    std::size_t place_;  // on the stack of scopes
};

/// The present level; 5 (`Note`) at start. A caller may ask before it builds an expensive text.
KM_API EMessageType::iterator Level();
/// Changes the level, and logs the change by the level that was.
KM_API void Level(EMessageType::iterator value);

/// `WriteMessage_2` without link.
KM_API void WriteMessage_1(EMessageType::iterator type, const std::string& text);

/// Logs a message if the level lets it through, after the opening marks of the scopes that have not been shown yet.
///
/// Each call is a check point of cancellation, also for a message that the level drops: it can throw `XUserAbort`,
/// before anything is written.
/// @param link       shown in the opening mark, if not empty
/// @param linkColor  colour of the link
KM_API void WriteMessage_2(EMessageType::iterator type, const std::string& text, const std::string& link,
                           int linkColor);

/// Forgets all records and draws the device anew. Open scopes are announced again by the next message.
KM_API void ClearLog();

/// The records since the log was last cleared.
KM_API const std::vector<LogRecord>& LogRecords();

/// Depth of the text. Others may adjust it. A negative one counts as 0, one above 10,000 as 10,000.
KM_API int& CurrentIndentation();
/// What is written once per depth; two blanks at start.
KM_API std::string& IndentAppearance();
/// Always 0; kept for formatters that ask.
KM_API int CurrentLineNumber();

}  // namespace Verbose

/// Logs a line without label, whatever the level; no check point.
KM_API void WriteLine(const std::string& text);

}  // namespace KM
