#pragma once

#include <memory>
#include <utility>

#include "Utils/U_Parser/Expression.h"

namespace KM::Parsing {

// Nodes are handed out as plain pointers, shared between trees, and outlive their session: nobody can say when the last
// use of one is over. They stay here to the end of the process; one that is deleted after all leaves.
class NodePool {
public:
    /// Once more, or for null, does nothing.
    static void Keep(Expression* node);
    static void Forget(Expression& node);

    template <class Node, class... Arguments>
    static Node* Make(Arguments&&... arguments) {
        auto node = std::make_unique<Node>(std::forward<Arguments>(arguments)...);
        Keep(node.get());
        return node.release();
    }

    /// Keeps something that nodes point into.
    static void KeepTargets(std::shared_ptr<const void> targets);
};

}  // namespace KM::Parsing
