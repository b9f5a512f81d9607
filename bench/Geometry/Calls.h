#pragma once

#include <cstddef>
#include <vector>

#include "Support/Report.h"

namespace KM::Bench {

/// Inputs are few enough to stay in the cache, and more than a predictor of branches learns by heart.
inline constexpr int InputCount = 1000;
inline constexpr int CallsPerInput = 1000;

/// Times `call(input)` over all inputs, again and again, and adds up what it gives, so that no call is dropped.
template <class Input, class Call>
void MeasureCalls(Report& report, const std::string& name, const std::vector<Input>& inputs, Call call,
                  const std::string& floor = "") {
    report.Measure({name, static_cast<double>(inputs.size()) * CallsPerInput, 0.0, floor}, [&] {
        double sum = 0.0;
        for (int i = 0; i < CallsPerInput; ++i)
            for (const Input& input : inputs) sum += static_cast<double>(call(input));
        return sum;
    });
}

}  // namespace KM::Bench
