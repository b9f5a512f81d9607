#pragma once

#include <memory>

namespace KM {

/// Gives a class the one object of it, made on first use. It is never destroyed, since static objects may still need it.
template <class T>
class Singleton {
public:
    static T& Instance() {
        static const std::shared_ptr<T>& instance = *new std::shared_ptr<T>(std::make_shared<T>());
        return *instance;
    }
};

/// Keeps the fields of a class in an object of its own.
template <class Fields>
class Impl {
protected:
    Fields& Get() { return fields_; }
    const Fields& Get() const { return fields_; }

private:
    Fields fields_;
};

}  // namespace KM
