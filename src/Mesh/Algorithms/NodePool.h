#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace KM {

/// Memory for the nodes of one tree, cut from blocks; a node that is given back serves next. All goes when the pool goes.
class NodePool {
public:
    NodePool() = default;
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    void* Take(std::size_t size) {
        if (free_ == nullptr) AddBlock(size);
        Link* const taken = free_;
        free_ = taken->next;
        return taken;
    }
    void GiveBack(void* node) { free_ = new (node) Link{free_}; }

private:
    struct Link {
        Link* next;
    };

    void AddBlock(std::size_t size) {
        constexpr std::size_t nodesInBlock = 256;
        blocks_.push_back(std::make_unique<std::byte[]>(nodesInBlock * size));
        for (std::size_t i = nodesInBlock; i-- > 0;) GiveBack(blocks_.back().get() + i * size);
    }

    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    Link* free_ = nullptr;
};

/// Gives a standard container the nodes of a pool, which must be of one size and aligned no more strictly than `new` is.
template <class T>
class PoolAllocator {
public:
    using value_type = T;

    explicit PoolAllocator(NodePool& pool) : pool_(&pool) {}
    template <class U>
    explicit PoolAllocator(const PoolAllocator<U>& other) : pool_(&other.Pool()) {}

    T* allocate(std::size_t) { return static_cast<T*>(pool_->Take(sizeof(T))); }
    void deallocate(T* node, std::size_t) { pool_->GiveBack(node); }
    NodePool& Pool() const { return *pool_; }

    friend bool operator==(const PoolAllocator& a, const PoolAllocator& b) { return a.pool_ == b.pool_; }

private:
    NodePool* pool_;
};

}  // namespace KM
