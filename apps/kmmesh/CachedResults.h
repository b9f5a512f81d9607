#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "Deviation.h"
#include "LevelFiles.h"
#include "PartFile.h"
#include "Utils/U_Caching/CachedObjects.h"
#include "Verb.h"

/// Results that take long, kept in the cache folder for later runs. A result is found again by all that went into it: path,
/// size and time of the file that it comes from, the options that matter, and the version of the tool. What is found is
/// what would be made, bit by bit.
namespace KM::Tool {

/// The option "no-cache" of verbs that keep results.
Option NoCache();

/// What the name of each result begins with; its kind follows. The library puts "$" in front for the name of the file.
inline constexpr const char* CacheNamePrefix = "kmmesh-";

/// A file in the cache folder that is not sound is told of in one line on standard error, and replaced. One that cannot be
/// written is told of likewise, and the run goes on.
class CachedResult : public Caching::AInterface {
public:
    /// Finds the result, or makes it; what the making throws passes on.
    void Load() override;
    bool IsCreated() override { return isCreated_; }
    /// Makes the result, and keeps it if that took long enough, as `Caching::IsPersistent` says.
    void Create() const override;

    /// Whether it was found, and not made.
    bool IsFound() const { return isFound_; }
    const std::string& Kind() const { return kind_; }

protected:
    /// @param kind    a word for people, and for the name of the file
    /// @param inputs  all that it is made from, for people; numbers with all their digits
    CachedResult(const std::string& kind, const std::string& inputs, bool isUsed);
    /// For what is made from another result, too. That one must have been loaded.
    CachedResult(const std::string& kind, const std::string& inputs, const CachedResult& from);

    std::string OnGetDescription() const override { return inputs_; }

    virtual void Make() const = 0;
    virtual std::string Bytes() const = 0;
    /// @return  false for bytes that are no such result
    virtual bool Take(const std::string& bytes) const = 0;

    void Forget() { isCreated_ = false; }
    /// Neither this result nor those that are made from it may be looked for from now on, nor be kept.
    void StayAway() const { isUsed_ = false; }
    /// They are looked for, but not kept.
    void KeepNothing() const { isKept_ = false; }

private:
    bool IsTaken();
    void Keep() const;

    std::string kind_;
    std::string inputs_;
    std::string madeFrom_;
    mutable bool isUsed_;
    mutable bool isKept_ = true;
    mutable bool isCreated_ = false;
    bool isFound_ = false;
    bool isUnsound_ = false;  ///< there is a file, which cannot be used
};

/// A part with fewer triangles.
struct Reduction {
    PIN mesh;
    Deviation deviation;  ///< of the part and this one
};

// The bytes of results, and back. `Unpack` answers false, with anything in the value, for bytes that are none; indices that
// it gives are within the mesh.

std::string Pack(const Part& part);
bool Unpack(const std::string& bytes, Part& part);
std::string Pack(const Reduction& reduction);
bool Unpack(const std::string& bytes, Reduction& reduction);
std::string Pack(const Levels& levels);
bool Unpack(const std::string& bytes, Levels& levels);
std::string Pack(const std::vector<double>& numbers);
bool Unpack(const std::string& bytes, std::vector<double>& numbers);

/// A result that holds its value. Each run of the tool loads it once, and may change the value then.
template <class T>
class Cached : public CachedResult {
public:
    /// @param fits  tells whether a value can belong to what it is made from
    Cached(const std::string& kind, const std::string& inputs, const CachedResult& from, std::function<T()> make,
           std::function<bool(const T&)> fits = nullptr)
        : CachedResult(kind, inputs, from), make_(std::move(make)), fits_(std::move(fits)) {}

    T& Value() { return value_; }
    void Release() override {
        value_ = T();
        Forget();
    }

protected:
    Cached(const std::string& kind, const std::string& inputs, bool isUsed) : CachedResult(kind, inputs, isUsed) {}

    void Make() const override { value_ = make_(); }
    std::string Bytes() const override { return Pack(value_); }
    bool Take(const std::string& bytes) const override { return Unpack(bytes, value_) && (!fits_ || fits_(value_)); }

    mutable T value_;

private:
    std::function<T()> make_;
    std::function<bool(const T&)> fits_;
};

/// The mesh of an STL file. One that was changed in the last two seconds can change again without its time telling, so
/// nothing that is made from it is kept.
class CachedPart : public Cached<Part> {
public:
    /// @param isUsed  whether the cache may be used, also for all that is made from the part
    CachedPart(const std::string& file, bool isUsed);

private:
    struct Stamp;
    CachedPart(const std::string& file, const Stamp& stamp, bool isUsed);

    void Make() const override;

    std::string file_;
    std::string stamp_;
};

/// The number with all its digits.
std::string ExactText(double number);

/// Says in one line on standard error which of these results of a file were found, if any.
void TellFound(const std::string& file, std::initializer_list<const CachedResult*> results);

}  // namespace KM::Tool
