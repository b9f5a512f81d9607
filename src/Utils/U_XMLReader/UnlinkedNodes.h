#pragma once

#include "Utils/U_XMLReader/Nodes.h"

namespace KM::XML {

// Nodes that were taken out of their element and live on: whoever still holds one, or finds it through an index, can go
// on using it. They stay reachable here to the end of the process, and are never deleted, since a holder may delete
// his.
//
// Two things keep them safe to use: a node that is deleted after all leaves this place and the index of its keeper, and
// when its keeper dies, it becomes a root instead of keeping a link into nowhere. The keeper is the element whose index
// may name the node, whatever becomes of the node's own link to a parent.
class UnlinkedNodes {
public:
    /// The first keeper stays.
    static void Keep(Base& node, Element& keeper);
    static void Forget(Base& node);

    /// Null if it is dead.
    static Element* KeeperOf(const Base& node);

    /// Takes the keeper away from its nodes, and makes roots of those whose parent it is.
    static void Orphan(const Element& keeper);
};

}  // namespace KM::XML
