#include "Utils/U_Debug/Chronometer.h"

#include <cstdio>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/ReadableCount.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::Time {
namespace {

// Never destroyed: spans of other static objects can end after `main`.
struct Registry {
    std::mutex lock;
    std::map<std::string, AdditiveChronometer> byName;
};

Registry& Chronometers() {
    static Registry& registry = *new Registry;
    return registry;
}

/// All of them in the order of their names. They stay where they are, so the log can be written without the lock.
std::vector<const AdditiveChronometer*> AllChronometers() {
    const std::lock_guard guard(Chronometers().lock);
    std::vector<const AdditiveChronometer*> all;
    for (const auto& [name, chronometer] : Chronometers().byName) all.push_back(&chronometer);
    return all;
}

}  // namespace

ReadableCount Scaled(std::int64_t calls) {
    const double count = static_cast<double>(calls);
    if (count >= 1e10) return {static_cast<long long>(count / 1e9), 'B'};
    if (count >= 1e7) return {static_cast<long long>(count / 1e6), 'M'};
    if (count >= 10000) return {static_cast<long long>(count / 1000), 'K'};
    return {calls, ' '};
}

Chronometer::Chronometer(const std::string& name, bool enabled, const std::string& prefix, const std::string& postfix,
                         int indent)
    : enabled_(enabled), name_(name), prefix_(prefix), postfix_(postfix), indent_(indent), start_(Get()) {
    if (enabled_) Application::Services::DumpStream() << '\n' << name_ << ".begin();";
}

Chronometer::~Chronometer() {
    if (!enabled_) return;
    try {
        Application::Services::DumpStream() << name_ << ".end(); //Elapsed Time = " << ElapsedTime() << "[sec]; \n";
    } catch (...) {}  // a stream may be set to throw, and a trace line is not worth the process
}

double Chronometer::ElapsedTime() const { return Time::Get() - start_; }
void Chronometer::Reset() const { start_ = Time::Get(); }

AdditiveChronometer::AdditiveChronometer(const std::string& name) : name_(name) {}

AdditiveChronometer::AdditiveChronometer(const AdditiveChronometer& other)
    : name_(other.name_), total_(other.total_.load()), calls_(other.calls_.load()) {}

AdditiveChronometer& AdditiveChronometer::operator=(const AdditiveChronometer& other) {
    name_ = other.name_;
    total_ = other.total_.load();
    calls_ = other.calls_.load();
    return *this;
}

AdditiveChronometer::AdditiveChronometer(AdditiveChronometer&& other) noexcept
    : name_(std::move(other.name_)), total_(other.total_.load()), calls_(other.calls_.load()) {}

AdditiveChronometer& AdditiveChronometer::operator=(AdditiveChronometer&& other) noexcept {
    name_ = std::move(other.name_);
    total_ = other.total_.load();
    calls_ = other.calls_.load();
    return *this;
}

void AdditiveChronometer::EndSpan(double start) {
    total_.fetch_add(Time::Get() - start);
    calls_.fetch_add(1);
}

void AdditiveChronometer::Dump() const {
    if (Calls() == 0) return;
    const ReadableCount shown = Scaled(Calls());
    char text[512];  // holds the longest double too
    // The unit stands behind the count and a blank of its own; a count without unit leaves a second blank.
    std::snprintf(text, sizeof text, "Time: %7.2f Seconds, Called: %4lld %cTimes, Inside: ", Total(), shown.count,
                  shown.unit);
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, text + name_ + ";");
}

void AdditiveChronometer::DumpAll() {
    Verbose::Scope scope("ActiveActionsTracers");
    for (const AdditiveChronometer* chronometer : AllChronometers()) chronometer->Dump();
}

AdditiveChronometer& AdditiveChronometer::Get(const std::string& name) {
    return Chronometers().byName.try_emplace(name, name).first->second;
}

AdditiveChronometer::Auto::Auto(const std::string& name, AdditiveChronometer*& slot)
    : target_(slot), start_(Time::Get()) {
    if (std::atomic_ref(slot).load() != nullptr) return;
    const std::lock_guard guard(Chronometers().lock);
    if (slot == nullptr) std::atomic_ref(slot).store(&AdditiveChronometer::Get(name));
}

AdditiveChronometer::Auto::~Auto() {
    if (target_ != nullptr) target_->EndSpan(start_);
}

}  // namespace KM::Time
