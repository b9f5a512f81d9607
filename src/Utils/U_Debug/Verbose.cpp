#include "Utils/U_Debug/Verbose.h"

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

CheckPoint& CurrentCheckPoint() {
    static CheckPoint current = [] {};
    return current;
}

/// Shows the scopes that have not been shown yet, outermost first.
void AnnounceScopes() {
    LogState& state = State();
    while (state.announced < static_cast<int>(state.scopes.size())) {
        WriteRecord({state.scopes[state.announced]->Name(), "", "", 0, true, false});
        ++state.announced;
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

std::string Label(const std::string& label, bool isPlain) {
    if (isPlain) return label;
    return ColorCode(LabelColor(label)) + label + ColorCode(Console::GetForeground());
}

std::string OpeningMark(const OutputFormatter& formatter, const LogRecord& record) {
    std::string text = formatter.OpenMarkStart() + formatter.OpenLabelStyleStart();
    text += Label(record.label, formatter.IsOpenLabelPlain());
    if (!record.link.empty())
        text += " Link=\"" + ColorCode(record.linkColor) + record.link + ColorCode(Console::GetForeground()) + "\"";
    return text + formatter.OpenLabelStyleEnd() + formatter.OpenMarkEnd();
}

std::string ClosingMark(const OutputFormatter& formatter, const LogRecord& record) {
    return formatter.CloseMarkStart() + formatter.CloseLabelStyleStart() +
           Label(record.label, formatter.IsCloseLabelPlain()) + formatter.CloseLabelStyleEnd() +
           formatter.CloseMarkEnd();
}

std::string Indentation() {
    std::string text;
    for (int i = 0; i < State().indentation; ++i) text += State().indentAppearance;
    return text;
}

std::string SecondsSince(double start) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", Time::Get() - start);
    return std::string(text) + "[sec]";
}

}  // namespace

LogState& State() {
    static LogState state;
    return state;
}

void SetCheckPoint(CheckPoint checkPoint) { CurrentCheckPoint() = checkPoint; }

void WriteRecord(const LogRecord& record) {
    if (!Console::IsDumpEnabled() || !Services::HasOutputFormatter()) return;
    State().records.push_back(record);
    const OutputFormatter& formatter = *Services::GetOutputFormatter();
    const bool hasLabel = !record.label.empty();
    std::string text;
    if (record.begin && hasLabel) text += OpeningMark(formatter, record);
    text += ColorCode(MessageColor) + record.message + ColorCode(Console::GetForeground());
    if (record.end) {
        if (hasLabel) text += ClosingMark(formatter, record);
        if (!record.begin) --State().indentation;
    }
    WriteMarkedUp(*Services::GetDumpingDevice(), Indentation() + text);
    if (record.begin && !record.end) ++State().indentation;
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
    static const std::string noLink;
    WriteMessage_2(type, text, noLink, DefaultLinkColor);
}

void WriteMessage_2(EMessageType::iterator type, const std::string& text, const std::string& link, int linkColor) {
    CurrentCheckPoint()();
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

Scope::Scope(const std::string& name) : startTime_(Time::Get()), name_(name) { State().scopes.push_back(this); }

Scope::~Scope() { Unrole(); }

void Scope::Unrole() {
    if (closed_) return;
    closed_ = true;
    LogState& state = State();
    state.checkAbortEnabled = false;
    if (state.announced == static_cast<int>(state.scopes.size())) {
        WriteRecord({"Time", SecondsSince(startTime_), "", 0, true, true});
        --state.announced;
        WriteRecord({name_, "", "", 0, false, true});
    }
    // The last entry, without a search: scopes are strictly nested.
    if (!state.scopes.empty()) state.scopes.pop_back();
    state.checkAbortEnabled = true;
}

void Scope::Dummy() { dummyTime_ = startTime_; }

}  // namespace Verbose

void WriteLine(const std::string& text) {
    Verbose::AnnounceScopes();
    Verbose::WriteRecord({"", ColorCode(Verbose::MessageColor) + text + "`C`", "", 0, true, true});
}

}  // namespace KM
