#pragma once

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {

/// Gives a new session its vocabulary: each entry one node, which the compiler clones for each use.
void RegisterCatalogue(ParsingSession& session);

// The parts of it, in their order.

void RegisterFunctions(ParsingSession& session);
void RegisterOperators(ParsingSession& session);
void RegisterDump(ParsingSession& session);

}  // namespace KM::Parsing
