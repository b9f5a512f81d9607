#include "Utils/U_Debug/Verbose.h"

#include <algorithm>
#include <climits>
#include <cstdio>

#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Console/MarkUp.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/Time.h"

namespace KM {
namespace Verbose {
namespace {

constexpr int MessageColor = 15;
constexpr int DefaultLinkColor = 12;

// Far beyond any real nesting; keeps a depth that a caller has spoilt from making lines of gigabytes.
constexpr int DeepestIndentation = 10000;

void NoCheck() {}
CheckPoint currentCheckPoint = NoCheck;

void ChangeIndentation(int step) {
    // Anybody may have set it, to either end of its range.
    const long long depth = State().indentation + static_cast<long long>(step);
    State().indentation = static_cast<int>(std::clamp<long long>(depth, INT_MIN, INT_MAX));
}

/// Shows the scopes that have not been shown yet, outermost first.
void AnnounceScopes() {
    LogState& state = State();
    while (state.announced < static_cast<int>(state.scopes.size())) {
        // Counted before it is written, since a device may log from inside a line.
        const int next = state.announced++;
        try {
            WriteRecord({state.scopes[static_cast<std::size_t>(next)].name, "", "", 0, true, false});
        } catch (...) {
            state.announced = next;
            throw;
        }
    }
}

int LabelColor(const std::string& label) {
    if (label == "System" || label == "ScopeInfo" || label == "Time") return 9;
    if (label == "Error") return 12;
    if (label == "Warning") return 13;
    if (label == "Info") return 10;
    if (label == "Note") return 11;
    return 14;
}

/// A text in a colour, and the colour code of the console behind it.
void AppendColored(std::string& text, int color, const std::string& colored) {
    text += ColorCode(color);
    text += colored;
    text += ColorCode(Console::GetForeground());
}

void AppendLabel(std::string& text, const std::string& label, bool isPlain) {
    if (isPlain) text += label;
    else AppendColored(text, LabelColor(label), label);
}

// Statement by statement, since formatters may count on the order of the calls.
void AppendOpeningMark(std::string& text, OutputFormatter& formatter, const LogRecord& record) {
    text += formatter.OpenMarkStart();
    text += formatter.OpenLabelStyleStart();
    AppendLabel(text, record.label, formatter.IsOpenLabelPlain());
    if (!record.link.empty()) {
        text += " Link=\"";
        AppendColored(text, record.linkColor, record.link);
        text += '"';
    }
    text += formatter.OpenLabelStyleEnd();
    text += formatter.OpenMarkEnd();
}

void AppendClosingMark(std::string& text, OutputFormatter& formatter, const LogRecord& record) {
    text += formatter.CloseMarkStart();
    text += formatter.CloseLabelStyleStart();
    AppendLabel(text, record.label, formatter.IsCloseLabelPlain());
    text += formatter.CloseLabelStyleEnd();
    text += formatter.CloseMarkEnd();
}

std::string Indentation() {
    std::string text;
    const int depth = std::min(State().indentation, DeepestIndentation);
    for (int i = 0; i < depth; ++i) text += State().indentAppearance;
    return text;
}

std::string SecondsSince(double start) {
    char text[512];  // holds the longest double too
    std::snprintf(text, sizeof text, "%.2f[sec]", Time::Get() - start);
    return text;
}

/// The closing of a scope: keeps an abort away, and takes an entry off the stack also when the device throws.
class Closing {
public:
    /// @param place  where the scope was put on the stack
    Closing(const Scope* scope, std::size_t place) : scope_(scope), place_(place) { State().checkAbortEnabled = false; }
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing() {
        LogState& state = State();
        // The last entry, without a search: scopes are strictly nested.
        state.scopes.pop_back();
        if (place_ < state.scopes.size() && state.scopes[place_].scope == scope_) state.scopes[place_].scope = nullptr;
        state.announced = std::min(state.announced, static_cast<int>(state.scopes.size()));
        state.checkAbortEnabled = true;
    }

private:
    const Scope* scope_;
    std::size_t place_;
};

}  // namespace

LogState& State() {
    // Never destroyed: static objects may log after `main`.
    static LogState& state = *new LogState;
    return state;
}

void SetCheckPoint(CheckPoint checkPoint) { currentCheckPoint = checkPoint != nullptr ? checkPoint : NoCheck; }

void WriteRecord(const LogRecord& record) {
    if (!Console::IsDumpEnabled() || !Services::HasOutputFormatter()) return;
    State().records.push_back(record);
    OutputFormatter& formatter = *Services::GetOutputFormatter();
    const bool hasLabel = !record.label.empty();
    std::string text;
    if (record.begin && hasLabel) AppendOpeningMark(text, formatter, record);
    AppendColored(text, MessageColor, record.message);
    if (record.end && hasLabel) AppendClosingMark(text, formatter, record);
    if (record.end && !record.begin) ChangeIndentation(-1);
    WriteMarkedUp(*Services::GetDumpingDevice(), Indentation() + text);
    if (record.begin && !record.end) ChangeIndentation(1);
}

std::string EMessageType::Name(iterator type) {
    static const char* const names[] = {"None", "System", "Error", "Warning", "Info", "Note", "All"};
    const int index = static_cast<int>(type);
    return index >= 0 && index < 7 ? names[index] : "";
}

EMessageType::iterator Level() { return State().level; }

void Level(EMessageType::iterator value) {
    if (value == State().level) return;
    WriteMessage_1(EMessageType::System, "Level has changed from: MessageType." + EMessageType::Name(State().level) +
                                             " to: MessageType." + EMessageType::Name(value) + ";");
    State().level = value;
}

void WriteMessage_1(EMessageType::iterator type, const std::string& text) {
    WriteMessage_2(type, text, {}, DefaultLinkColor);
}

void WriteMessage_2(EMessageType::iterator type, const std::string& text, const std::string& link, int linkColor) {
    currentCheckPoint();
    if (static_cast<int>(type) > static_cast<int>(State().level)) return;
    AnnounceScopes();
    WriteRecord({EMessageType::Name(type), text, link, linkColor, true, true});
}

void ClearLog() {
    State().records.clear();
    Services::GetDumpingDevice()->Redraw();
    State().announced = 0;
    State().indentation = 0;
    WriteMessage_1(EMessageType::Info, "Log has been cleared!");
}

const std::vector<LogRecord>& LogRecords() { return State().records; }
int& CurrentIndentation() { return State().indentation; }
std::string& IndentAppearance() { return State().indentAppearance; }
int CurrentLineNumber() { return 0; }

Scope::Scope(const std::string& name) : startTime_(Time::Get()), name_(name), place_(State().scopes.size()) {
    State().scopes.push_back({name, this});
}

Scope::~Scope() { Unrole(); }

void Scope::Unrole() {
    if (closed_) return;
    closed_ = true;
    const Closing closing(this, place_);
    LogState& state = State();
    if (state.announced != static_cast<int>(state.scopes.size())) return;
    WriteRecord({"Time", SecondsSince(startTime_), "", 0, true, true});
    --state.announced;
    WriteRecord({name_, "", "", 0, false, true});
}

void UnroleInnermost() {
    Scope* const scope = State().scopes.back().scope;
    if (scope != nullptr) return scope->Unrole();
    const bool isShown = State().announced == static_cast<int>(State().scopes.size());
    const std::string name = State().scopes.back().name;
    const Closing closing(nullptr, 0);
    if (isShown) WriteRecord({name, "", "", 0, false, true});
}

void Scope::Dummy() { dummyTime_ = startTime_; }

}  // namespace Verbose

void WriteLine(const std::string& text) {
    Verbose::AnnounceScopes();
    Verbose::WriteRecord({"", ColorCode(Verbose::MessageColor) + text + "`C`", "", 0, true, true});
}

}  // namespace KM
