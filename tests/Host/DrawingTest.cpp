#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "KmHost.h"

namespace {

/// Writes down what it is told, and answers each annotation with 5.
struct Recorder {
    std::ostringstream text;

    Recorder() {
        const KmDrawListener listener{
            this,
            [](void* user, int colour) { return Note(user) << "line " << colour << '\n', 0; },
            [](void* user, const double a[3], const double b[3]) {
                return Note(user) << a[0] << ' ' << a[2] << " to " << b[0] << ' ' << b[2] << '\n', 0;
            },
            [](void* user, int colour) { return Note(user) << "point " << colour << '\n', 0; },
            [](void* user, int type) { return Note(user) << "type " << type << '\n', 0; },
            [](void* user, const double p[3]) { return Note(user) << "at " << p[0] << ' ' << p[2] << '\n', 0; },
            [](void* user, const double p[3], const char* label, double height, int colour) {
                return Note(user) << label << ' ' << p[1] << ' ' << height << ' ' << colour << '\n', 5;
            }};
        KmHostSetDrawListener(&listener);
    }
    ~Recorder() { KmHostSetDrawListener(nullptr); }

    static std::ostream& Note(void* user) { return static_cast<Recorder*>(user)->text; }
};

const double A[3] = {1, 2, 3};
const double B[3] = {4, 5, 6};

TEST(Drawing, DoesNothingWithoutAListener) {
    EXPECT_EQ(KmDbSetLineCol(1), 0);
    EXPECT_EQ(KmDbLineDisp(A, B), 0);
    EXPECT_EQ(KmDbSetPntCol(1), 0);
    EXPECT_EQ(KmDbSetPntType(1), 0);
    EXPECT_EQ(KmDbPntAdd(A), 0);
    EXPECT_EQ(KmDbAnnoDisp(A, "v1", 0.5, 2), 0);
}

TEST(Drawing, ReachesTheListenerInOrder) {
    Recorder recorder;
    KmDbSetLineCol(6);
    KmDbLineDisp(A, B);
    KmDbSetPntCol(2);
    KmDbSetPntType(7);
    KmDbPntAdd(B);
    EXPECT_EQ(KmDbAnnoDisp(A, "v1", 0.5, 3), 5);
    EXPECT_EQ(recorder.text.str(), "line 6\n1 3 to 4 6\npoint 2\ntype 7\nat 4 6\nv1 2 0.5 3\n");
}

TEST(Drawing, StopsReachingAListenerThatIsTakenAway) {
    Recorder recorder;
    KmHostSetDrawListener(nullptr);
    KmDbPntAdd(A);
    EXPECT_EQ(recorder.text.str(), "");
}

TEST(Drawing, PassesOverWhatAListenerDoesNotWantToHear) {
    const KmDrawListener deaf{};
    KmHostSetDrawListener(&deaf);
    EXPECT_EQ(KmDbAnnoDisp(A, "v1", 0.5, 2), 0);
    KmHostSetDrawListener(nullptr);
}

TEST(KgDbgDisplayLoc, IsZeroAtStart) { EXPECT_EQ(KgDbgDisplayLoc, 0); }

}  // namespace
