#pragma once

#include <ostream>

#include "KmApi.h"

namespace KM {

/// The root of the polymorphic classes. The virtual operations stand in this order.
class KM_API Object {
public:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;
    virtual ~Object();

    /// Writes a text that describes the object; the plain class writes nothing.
    virtual void Dump(std::ostream& out) const;
};

/// A count that also an operation on a constant object can set.
class KM_API Sizer {
public:
    Sizer() = default;
    explicit Sizer(unsigned size) : size_(size) {}

    unsigned size() const { return size_; }

protected:
    void size(unsigned size) const { size_ = size; }

private:
    mutable unsigned size_ = 0;
};

/// The base of what is never instantiated.
class KM_API PureAbstract {
public:
    PureAbstract() = default;
    PureAbstract(const PureAbstract&) = default;
    PureAbstract& operator=(const PureAbstract&) = default;
    virtual ~PureAbstract() = 0;
};

/// The base of a holder of an enumeration. Callers pass its nested `iterator` about, never the holder.
class KM_API Enums : public PureAbstract {
public:
    Enums() = default;
    Enums(const Enums&) = default;
    Enums& operator=(const Enums&) = default;
    ~Enums() override;
};

}  // namespace KM
