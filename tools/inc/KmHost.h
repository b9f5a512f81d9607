#pragma once

#include "KmTools.h"

/// What the stand-alone host offers beyond the services: a listener for debug drawings, and failures on demand. The library
/// itself needs none of this, and a real host's own library need not have it.

#ifdef __cplusplus
extern "C" {
#endif

/// Receives the drawing calls. Each function gets `user` first and returns what the drawing call is to return; one that is
/// null is passed over, and its call returns 0.
typedef struct KmDrawListener {
    void* user;
    int (*setLineColour)(void* user, int colour);
    int (*displayLine)(void* user, const double from[3], const double to[3]);
    int (*setPointColour)(void* user, int colour);
    int (*setPointType)(void* user, int type);
    int (*addPoint)(void* user, const double point[3]);
    int (*displayAnnotation)(void* user, const double point[3], const char* text, double height, int colour);
} KmDrawListener;

/// Sends all drawing calls from now on, of every thread, to a copy of `*listener`. Null, the state at start, drops them.
KM_HOST_API void KmHostSetDrawListener(const KmDrawListener* listener);

/// The services that can be made to fail.
typedef enum KmHostService {
    KM_HOST_MEM_ALLOC,
    KM_HOST_MEM_FREE,
    KM_HOST_MEM_CPY,
    KM_HOST_LIST_MK,
    KM_HOST_LIST_SET,
    KM_HOST_LIST_GET_ARRAY,
    KM_HOST_LIST_DEL,
    KM_HOST_LIST_RESET,
    KM_HOST_LIST_ITR_INIT2,
    KM_HOST_LIST_ITR_PTR,
    KM_HOST_SERVICE_COUNT
} KmHostService;

/// What a service returns that was made to fail; no service returns this otherwise.
enum { KM_HOST_INJECTED_FAILURE = 77 };

/// Lets a developer try how code behaves when the host fails: the next `calls` calls of the service work, and the one after
/// these does nothing and returns `KM_HOST_INJECTED_FAILURE`. Then the service works again. A negative number takes the
/// order back. Counts the calls of the calling thread alone; a service that is not in the list is ignored.
KM_HOST_API void KmHostFailAfter(KmHostService service, int calls);

/// Takes all orders of the calling thread back. Returns how many were still waiting.
KM_HOST_API int KmHostFailNever(void);

#ifdef __cplusplus
}
#endif
