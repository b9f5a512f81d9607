#pragma once

// Everything public.

#include "Facet/FlatMesh.h"
#include "Facet/HostRecords.h"
#include "Facet/LevelsOfDetail.h"
#include "Facet/Strips.h"
#include "Geometry/Point.h"
#include "KmApi.h"
#include "KmTools.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/EdgesMap.h"
#include "Mesh/Core/Fans.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Core/Orientation.h"
#include "Mesh/Core/Pin.h"
#include "Mesh/Core/PinTolerance.h"
#include "Mesh/Core/PinVisitor.h"
#include "Mesh/Core/WholeMesh.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/Objects.h"
