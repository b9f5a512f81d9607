#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Utils/U_Caching/CachedObjects.h"

namespace KM::Test {

/// A result without view.
class Result : public Caching::ACached {
public:
    explicit Result(const std::string& name = "", std::string others = "") : others_(std::move(others)) {
        if (!name.empty()) Name(name);
    }
    void Create() const override {}

protected:
    std::string OnGetDescription() const override { return others_; }

private:
    std::string others_;
};

/// A result that is its own view, and notes its name when it is released.
class ViewedResult : public Caching::AInterface {
public:
    explicit ViewedResult(const std::string& name, std::vector<std::string>* released = nullptr) : released_(released) {
        Name(name);
    }
    void Create() const override { isCreated_ = true; }
    void Load() override { Create_(); }
    bool IsCreated() override { return isCreated_; }
    void Release() override {
        isCreated_ = false;
        if (released_ != nullptr) released_->push_back(Name());
    }

    using AInterface::FileName_;
    using AInterface::GetDescription_;

private:
    mutable bool isCreated_ = false;
    std::vector<std::string>* released_;
};

}  // namespace KM::Test
