#include "Utils/U_Debug/Chronometer.h"

#include <cstdio>
#include <map>
#include <mutex>

#include "Utils/U_App/Services.h"
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

struct ReadableCount {
    double count;
    char unit;
};

ReadableCount Scaled(double count) {
    if (count >= 1e10) return {count / 1e9, 'B'};
    if (count >= 1e7) return {count / 1e6, 'M'};
    if (count >= 10000) return {count / 1000, 'K'};
    return {count, ' '};
}

}  // namespace

Chronometer::Chronometer(const std::string& name, bool enabled, const std::string& prefix, const std::string& postfix,
                         int indent)
    : enabled_(enabled), name_(name), prefix_(prefix), postfix_(postfix), indent_(indent), start_(Get()) {
    if (enabled_) Application::Services::DumpStream() << '\n' << name_ << ".begin();";
}

Chronometer::~Chronometer() {
    if (enabled_)
        Application::Services::DumpStream() << name_ << ".end(); //Elapsed Time = " << ElapsedTime() << "[sec]; \n";
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
    const ReadableCount count = Scaled(static_cast<double>(Calls()));
    char text[128];
    // The unit stands behind the count and a blank of its own; a count without unit leaves a second blank.
    std::snprintf(text, sizeof text, "Time: %7.2f Seconds, Called: %4d %cTimes, Inside: ", Total(),
                  static_cast<int>(count.count), count.unit);
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, text + name_ + ";");
}

void AdditiveChronometer::DumpAll() {
    Verbose::Scope scope("ActiveActionsTracers");
    for (const auto& [name, chronometer] : Chronometers().byName) chronometer.Dump();
}

AdditiveChronometer& AdditiveChronometer::Get(const std::string& name) {
    return Chronometers().byName.try_emplace(name, name).first->second;
}

AdditiveChronometer::Auto::Auto(const std::string& name, AdditiveChronometer*& slot) : target_(slot), start_(Time::Get()) {
    if (std::atomic_ref(slot).load() != nullptr) return;
    const std::lock_guard guard(Chronometers().lock);
    if (slot == nullptr) std::atomic_ref(slot).store(&AdditiveChronometer::Get(name));
}

AdditiveChronometer::Auto::~Auto() { target_->EndSpan(start_); }

}  // namespace KM::Time
