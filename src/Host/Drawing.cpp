#include "KmHost.h"

int32_t KgDbgDisplayLoc = 0;

namespace {

KmDrawListener drawListener{};

template <class Function, class... Arguments>
int Tell(Function function, Arguments... arguments) {
    return function != nullptr ? function(drawListener.user, arguments...) : 0;
}

}  // namespace

void KmHostSetDrawListener(const KmDrawListener* listener) {
    drawListener = listener != nullptr ? *listener : KmDrawListener{};
}

int KmDbSetLineCol(int colour) { return Tell(drawListener.setLineColour, colour); }

int KmDbLineDisp(const double from[3], const double to[3]) { return Tell(drawListener.displayLine, from, to); }

int KmDbSetPntCol(int colour) { return Tell(drawListener.setPointColour, colour); }

int KmDbSetPntType(int type) { return Tell(drawListener.setPointType, type); }

int KmDbPntAdd(const double point[3]) { return Tell(drawListener.addPoint, point); }

int KmDbAnnoDisp(const double point[3], const char* text, double height, int colour) {
    return Tell(drawListener.displayAnnotation, point, text, height, colour);
}
