#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Asks for the cache line at `address` and does not wait for it.
inline void FetchLine([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

// The faces of a mesh as the strip cutter sees them, in two forms with the same answers: edge indices, their links, and
// whether a face has been taken. Edges that are dead, or from which `NE` does not lead round a loop, cannot be taken; a
// twin that does not exist is none. `Fetch` announces that an edge, or none, will be read soon.
//
//      P0(Third)
//       /    \        On a triangle the third edge is the previous one.
//   Third    Next
//     /        \ .
//   P0 - edge - P0(Next)

/// A mesh whose every triangle fills three slots in a row, as the builders make it. What a walk reads of a triangle is
/// laid out anew: each step waits for the one before it, so each cache line that it does not touch is time won.
class SlotTriangles {
public:
    /// Nothing when the mesh is of another form.
    static std::optional<SlotTriangles> Of(const std::vector<Edge>& edges);

    int Count() const { return static_cast<int>(links_.size()); }
    int Next(int edge) const { return Slot(edge) == 2 ? edge - 2 : edge + 1; }
    int Previous(int edge) const { return Slot(edge) == 0 ? edge + 2 : edge - 1; }
    int Third(int edge) const { return Previous(edge); }
    int Twin(int edge) const { return links_[edge].twin; }
    int Node(int edge) const { return links_[edge].node; }

    bool IsUntaken(int edge) const { return edge != -1 && states_[Triangle(edge)] != State::Taken; }
    bool CanTake(int edge) const { return edge != -1 && states_[Triangle(edge)] == State::Free; }
    void Take(int edge) { states_[Triangle(edge)] = State::Taken; }
    void GiveBack(int edge) { states_[Triangle(edge)] = State::Free; }
    void Fetch(int edge) const {
        if (edge != -1) FetchLine(&links_[edge]);
    }

private:
    enum class State : std::uint8_t { Free, Taken, Dead };

    struct Links {
        int twin;
        int node;
    };

    static std::uint32_t Triangle(int edge) { return static_cast<std::uint32_t>(edge) / 3; }
    static std::uint32_t Slot(int edge) { return static_cast<std::uint32_t>(edge) % 3; }

    std::vector<Links> links_;   // per edge
    std::vector<State> states_;  // per triangle
};

/// A mesh of any loops, with any links. Of a loop of more than three edges one step takes three: an edge and its two
/// neighbours.
class AnyLoops {
public:
    explicit AnyLoops(const std::vector<Edge>& edges);

    int Count() const { return static_cast<int>(taken_.size()); }
    int Next(int edge) const { return edges_[edge].NE; }
    int Previous(int edge) const { return previous_[edge]; }
    int Third(int edge) const { return Next(Next(edge)); }
    int Twin(int edge) const { return edges_[edge].TE; }
    int Node(int edge) const { return edges_[edge].P0; }

    bool IsUntaken(int edge) const { return Exists(edge) && !taken_[edge]; }
    bool CanTake(int edge) const { return IsUntaken(edge) && previous_[edge] != -1; }
    void Take(int edge) { Mark(edge, 1); }
    void GiveBack(int edge) { Mark(edge, 0); }
    void Fetch(int edge) const {
        if (!Exists(edge)) return;
        FetchLine(&edges_[edge]);
        FetchLine(&previous_[edge]);
    }

private:
    bool Exists(int edge) const { return edge >= 0 && edge < Count(); }
    void Mark(int edge, char taken) { taken_[edge] = taken_[Next(edge)] = taken_[Previous(edge)] = taken; }

    const Edge* edges_;
    std::vector<int> previous_;
    std::vector<char> taken_;  // per edge
};

/// For each edge on a loop the one before it on that loop; -1 for an edge whose `NE` never leads back to it, or leads
/// out of the mesh. Linear time, whatever the links are.
std::vector<int> PreviousOnLoops(const std::vector<Edge>& edges);

}  // namespace KM
