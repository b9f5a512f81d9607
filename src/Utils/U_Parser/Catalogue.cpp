#include "Utils/U_Parser/Catalogue.h"

#include "Utils/U_Parser/Blocks.h"
#include "Utils/U_Parser/Indexers.h"
#include "Utils/U_Parser/TextNodes.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {

void RegisterCatalogue(ParsingSession& session) {
    const auto add = [&session](const char* name, Expression* node) { session.Add(name, session.AddToDealloc(node)); };
    add("_OPEN_", new AgregateBegin);
    add("Aux", new DoublesIndexer(session.Link()));
    add("$Aux", new StringsIndexer(session.Link()));
    add("$P", new ParametersIndexer(session.Link()));
    RegisterFunctions(session);
    RegisterOperators(session);
    RegisterDump(session);
    add("VOID", new Void);
    add("$ToString", new ToStringType);
    add("ToString", new ToStringType);
}

}  // namespace KM::Parsing
