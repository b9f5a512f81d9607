#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "KmApi.h"

namespace KM::Time {

/// Measures one span. An enabled one writes its begin and its end to the dump stream.
class KM_API Chronometer {
public:
    Chronometer(const std::string& name, bool enabled, const std::string& prefix, const std::string& postfix,
                int indent);
    Chronometer(const Chronometer&) = delete;
    Chronometer& operator=(const Chronometer&) = delete;
    ~Chronometer();

    /// Seconds since construction or `Reset`.
    double ElapsedTime() const;
    void Reset() const;

private:
    bool enabled_;
    std::string name_;
    std::string prefix_;
    std::string postfix_;
    [[maybe_unused]] int indent_;  // for hosts that read the record; no text shows it
    mutable double start_;
};

/// Sums the time spent in a named place over the whole run. The instances live in one map of the process, by name.
///
///     static Time::AdditiveChronometer* slot = nullptr;
///     Time::AdditiveChronometer::Auto span("Linking", slot);
class KM_API AdditiveChronometer {
public:
    explicit AdditiveChronometer(const std::string& name);
    AdditiveChronometer(const AdditiveChronometer& other);
    AdditiveChronometer& operator=(const AdditiveChronometer& other);
    AdditiveChronometer(AdditiveChronometer&& other) noexcept;
    AdditiveChronometer& operator=(AdditiveChronometer&& other) noexcept;

    /// Adds the time since `start`, a moment of `Time::Get`, and counts one call. Any thread.
    void EndSpan(double start);

    /// Logs one line at `Info`; nothing if there was no call.
    void Dump() const;
    /// Logs every chronometer of the process, in the order of their names, in a scope "ActiveActionsTracers".
    static void DumpAll();

    const std::string& Name() const { return name_; }
    double Total() const { return total_; }
    std::int64_t Calls() const { return calls_; }

    /// Measures from its construction to its end. The name is looked up once for each slot; after that a span costs two
    /// readings of the clock.
    class KM_API Auto {
    public:
        /// @param slot  of the place of call, null at first; lives as long as the process
        Auto(const std::string& name, AdditiveChronometer*& slot);
        Auto(const Auto&) = delete;
        Auto& operator=(const Auto&) = delete;
        ~Auto();

    private:
        AdditiveChronometer*& target_;
        double start_;
    };

private:
    static AdditiveChronometer& Get(const std::string& name);

    std::string name_;
    std::atomic<double> total_{0.0};
    std::atomic<std::int64_t> calls_{0};
};

}  // namespace KM::Time
