#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace KM {

/// A set of indices below a fixed bound, in which the next member from anywhere is found at once: one bit an index, and
/// above each 64 bits one that tells whether any of them is set, level upon level.
class IndexSet {
public:
    explicit IndexSet(int bound) {
        std::size_t words = 0;
        for (std::size_t bits = static_cast<std::size_t>(bound); bits > 1 || depth_ == 0; bits = WordsFor(bits)) {
            first_[depth_++] = words;
            words += WordsFor(bits);
        }
        first_[depth_] = words;
        words_.resize(words, 0);
    }

    void Insert(int index) {
        auto i = static_cast<std::size_t>(index);
        for (int level = 0; level < depth_; ++level, i /= Bits) {
            std::uint64_t& word = Word(level, i);
            const bool wasEmpty = word == 0;
            word |= BitOf(i);
            if (!wasEmpty) return;
        }
    }

    void Erase(int index) {
        auto i = static_cast<std::size_t>(index);
        for (int level = 0; level < depth_; ++level, i /= Bits) {
            std::uint64_t& word = Word(level, i);
            word &= ~BitOf(i);
            if (word != 0) return;
        }
    }

    /// The first member from `index` on, or from 0 on if there is none behind; -1 if the set is empty.
    int FindRound(int index) const {
        const int found = FindFrom(static_cast<std::size_t>(index));
        return found != -1 || index == 0 ? found : FindFrom(0);
    }

private:
    static constexpr std::size_t Bits = 64;
    static constexpr int MostLevels = 6;  // enough for 2^36 bits

    static std::size_t WordsFor(std::size_t bits) { return bits == 0 ? 1 : (bits + Bits - 1) / Bits; }
    static std::uint64_t BitOf(std::size_t i) { return std::uint64_t{1} << (i % Bits); }
    std::uint64_t& Word(int level, std::size_t i) { return words_[first_[level] + i / Bits]; }

    /// Climbs until a word has a member behind, and goes down to the first of them.
    int FindFrom(std::size_t i) const {
        for (int level = 0; level < depth_; ++level, i = i / Bits + 1) {
            const std::size_t at = first_[level] + i / Bits;
            if (at >= first_[level + 1]) return -1;
            const std::uint64_t behind = words_[at] & (~std::uint64_t{0} << (i % Bits));
            if (behind == 0) continue;
            i = i / Bits * Bits + static_cast<std::size_t>(std::countr_zero(behind));
            while (level-- > 0) i = i * Bits + static_cast<std::size_t>(std::countr_zero(words_[first_[level] + i]));
            return static_cast<int>(i);
        }
        return -1;
    }

    std::vector<std::uint64_t> words_;
    std::size_t first_[MostLevels + 1] = {};  // word of each level; behind them, where the last one ends
    int depth_ = 0;
};

}  // namespace KM
