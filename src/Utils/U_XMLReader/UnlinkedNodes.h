#pragma once

#include "Utils/U_XMLReader/Nodes.h"

namespace KM::XML {

// Nodes that were taken out of their element and live on: whoever still holds one, or finds it through an index, can go
// on using it. They stay reachable here to the end of the process, and are never deleted, since a holder may delete
// his.
//
// Two things keep them safe to use: a node that is deleted after all leaves this place, and when its former element
// dies, it becomes a root instead of keeping a link into nowhere.
class UnlinkedNodes {
public:
    static void Keep(Base& node);
    static void Forget(Base& node);

    /// Makes roots of the nodes whose parent is `parent`.
    static void Orphan(const Element& parent);
};

}  // namespace KM::XML
