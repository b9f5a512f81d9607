#pragma once

#include <memory>
#include <string>
#include <vector>

#include "KmApi.h"
#include "Utils/U_Caching/Key.h"

namespace KM::XML {
class Element;
}

namespace KM::Caching {

class AInterface;

/// The base of results that are kept on disk, in a file whose name is made from all that went into them. So a later run
/// with the same inputs finds the file, and skips the work.
///
/// A result is constructed, named, given its inputs (`Mix` into `GetKey`) and its dependencies, in an order that is
/// always the same; only then may it be asked for file names. Reading and writing the files is the derived class's own.
///
/// Results depend on each other in a graph, in which loops are allowed, and stay where they are: none is copied. They may
/// die in any order; one that is gone counts as no longer subscribed. One thread at a time.
///
/// The virtual operations stand in this order.
class KM_API ACached {
public:
    /// Without name, and with a new key. Each new object is a chance to clean the cache folder, so that messages are
    /// logged, each a point of cancellation.
    ACached();
    /// Takes the last entry off `CachedObjects`, whoever it belongs to: objects are meant to die in the reverse order of
    /// their construction. Releases the views of other objects that are subscribed here; those of this object itself
    /// are gone by then, so a class releases what it holds in its own destructor. What `Release` throws is lost.
    virtual ~ACached();

    /// The plain class writes nothing.
    virtual void Dump(XML::Element& element, bool flag) const;
    /// Produces the result.
    virtual void Create() const = 0;

    /// Stores the name, and mixes it into the key. A second name is mixed in as well.
    ///
    /// It becomes a part of file names. Names with a NUL, or longer than the system takes, have no files; separators in
    /// it lead to folders below the cache folder.
    void Name(const std::string& name);
    const std::string& Name() const { return name_; }

    /// The key, for derived classes to mix their inputs in.
    Key<6>& GetKey() const { return key_; }

    /// Says that this result is made from another one, and mixes that one's present key in. The same pair again changes
    /// nothing; with another flag it is mixed in once more. The flag has no other meaning here.
    /// @throws  std::length_error  "list<T> too long"
    void SubscribeDependsOn(const ACached& other, bool flag) const;
    /// Adds a view, which may belong to another object.
    /// @throws  std::length_error  "list<T> too long"
    void SubscribeInterface(const AInterface& view) const;
    /// Takes `other` out of the objects that are invalidated with this one, once if it stands there more often.
    void DetachDerived(const ACached& other) const;

    /// `Path` + "$" + name + "." + key text: what the names of all files of this result begin with.
    std::string FileName() const;
    std::string CreateFileName(const std::string& extension) const;

    /// Name and key, those of all objects that this one depends on, in depth, and what `OnGetDescription` adds. In one
    /// line; `FormatString` lays it out.
    ///
    /// An object that is reached from itself is told there by name and key only; so are all once the text is longer
    /// than 64 MB, as a graph with many ways to the same objects makes it.
    std::string GetDescription() const;

    /// Drops what the views hold in memory. Files stay.
    void Destroy() const;
    /// Says that the result is wrong: drops what the views hold, does the same with all that was derived from it, in
    /// depth, and deletes the files `FileName` + ".*" on the way back.
    ///
    /// An object that is reached on several ways is dropped on each of them. One that is derived from itself is not
    /// entered below itself; and where the ways are more than some ten thousands, each object is still reached once.
    ///
    /// The name is taken as it is: a "*" in it stands for itself. What lies outside the cache folder stays, with a
    /// `Warning`.
    void Invalidate() const;

    // A switch of the process, for callers that wish to log keys; off at start.

    static void EnableKeyDumping();
    static void DisableKeyDumping();
    static bool KeyDumping();

protected:
    /// Leads to an object for as long as it lives, and to null afterwards.
    template <class T>
    using Link = std::shared_ptr<T*>;

    /// What else the result is made from; empty in the plain class.
    virtual std::string OnGetDescription() const;
    void CreateWrapper() const { Create(); }

private:
    friend KM_API std::vector<ACached*> CachedObjects();
    friend KM_API void DumpCurrentlyCachedObjects();

    // Each derived class hides the operator by its own, which is deleted; nothing is lost by that.
#if defined(__GNUC__)
#  pragma GCC diagnostic push
#  pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    /// Does nothing: what a result is made from stays with it.
    virtual ACached& operator=(const ACached& other);
#if defined(__GNUC__)
#  pragma GCC diagnostic pop
#endif
    ACached(const ACached&) = delete;

    struct Dependency {
        Link<ACached> object;
        bool flag;
        bool operator==(const Dependency&) const = default;
    };

    class Invalidation;
    class Description;

    struct Enrolled {};
    explicit ACached(Enrolled);

    template <class T>
    static bool IsGone(const Link<T>& link) {
        return *link == nullptr;
    }
    static bool IsGone(const Dependency& dependency) { return IsGone(dependency.object); }
    template <class Entry>
    static void MakeRoom(std::vector<Entry>& list);
    static std::vector<Link<ACached>>& Registry();
    void DumpStatus() const;

    std::string name_;
    mutable std::vector<Link<AInterface>> interfaces_;
    mutable std::vector<Dependency> dependencies_;
    mutable std::vector<Link<ACached>> derived_;
    mutable Key<6> key_;
    Link<ACached> link_;
};

/// A view on a cached result: what a program works with. It subscribes itself to its `ACached`.
///
/// The virtual operations stand in this order.
class KM_API AInterface : public virtual ACached {
public:
    AInterface();
    ~AInterface() override;

    /// Brings the result into memory.
    virtual void Load() = 0;
    /// True if the view holds its result.
    virtual bool IsCreated() = 0;
    /// Drops what the view holds in memory; may be called when it holds nothing.
    virtual void Release() = 0;

protected:
    void Create_() const { CreateWrapper(); }
    std::string FileName_() const { return FileName(); }
    std::string GetDescription_() const { return GetDescription(); }

private:
    friend class ACached;

    Link<AInterface> link_;
};

/// All live objects in the order of their construction, as far as they die in the reverse order: each death takes the
/// last entry off, and leaves out what is dead of the rest.
KM_API std::vector<ACached*> CachedObjects();

/// Logs what is in memory, an `Info` for each object that has views: whether the first of them holds its result, the
/// size of its data file in Kb, and the name. Nothing below the level `All`.
KM_API void DumpCurrentlyCachedObjects();

}  // namespace KM::Caching
