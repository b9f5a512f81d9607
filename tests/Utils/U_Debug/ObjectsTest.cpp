#include "Utils/U_Debug/Objects.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <type_traits>

namespace KM {
namespace {

static_assert(std::has_virtual_destructor_v<Object> && sizeof(Object) == sizeof(void*));
static_assert(std::is_abstract_v<PureAbstract> && sizeof(PureAbstract) == sizeof(void*));
static_assert(std::is_base_of_v<PureAbstract, Enums> && !std::is_abstract_v<Enums>);
static_assert(sizeof(Sizer) == sizeof(unsigned));

struct Named : Object {
    explicit Named(bool* destroyed) : destroyed_(destroyed) {}
    ~Named() override { *destroyed_ = true; }
    void Dump(std::ostream& out) const override { out << "named"; }

private:
    bool* destroyed_;
};

struct Growing : Sizer {
    using Sizer::size;
    void Grow() const { size(size() + 1); }
};

TEST(Object, DumpsNothing) {
    std::ostringstream out;
    Object().Dump(out);
    EXPECT_EQ(out.str(), "");
}

TEST(Object, IsDumpedAndDestroyedThroughItsBase) {
    bool destroyed = false;
    std::ostringstream out;
    std::unique_ptr<Object> object = std::make_unique<Named>(&destroyed);
    object->Dump(out);
    EXPECT_EQ(out.str(), "named");
    object.reset();
    EXPECT_TRUE(destroyed);
}

TEST(Sizer, IsZeroByDefault) {
    EXPECT_EQ(Sizer().size(), 0u);
    EXPECT_EQ(Sizer(7).size(), 7u);
}

TEST(Sizer, CanGrowWhileConstant) {
    const Growing sizer;
    sizer.Grow();
    sizer.Grow();
    EXPECT_EQ(sizer.size(), 2u);
}

}  // namespace
}  // namespace KM
