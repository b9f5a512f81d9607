#pragma once

// One function a topic of the geometry kit. Each prints a table of its own, in nanoseconds a call.

namespace KM::Bench {

void MeasureLines();
void MeasurePlanes();
void MeasureSolvers();

}  // namespace KM::Bench
