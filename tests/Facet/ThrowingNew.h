#pragma once

namespace KM::Test {

/// While true, `operator new` of the program throws an `int`, which no standard allocator does: an entry that promises
/// to catch everything must catch that, too.
extern bool throwOnNew;

}  // namespace KM::Test
