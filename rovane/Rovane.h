// Umbrella header: everything a program needs from Rovane.
#pragma once

#include "rovane/scalars/Scalars.h"
#include "rovane/scalars/RovaneUtils.h"
#include "rovane/primitives/ippspl.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/storage/ReportChannel.h"
#include "rovane/primitives/DFTIDescriptors.h"
#include "rovane/primitives/lapack_dfti_core.h"
#include "rovane/storage/RovaneBase.h"
#include "rovane/storage/ObjectCache.h"
#include "rovane/containers/AbstractRovane.h"
#include "rovane/containers/Rovane.h"
#include "rovane/containers/RovaneInt.h"
#include "rovane/parallel/MtxForLoop.h"
#include "rovane/methods/RndGenerators.h"
#include "rovane/storage/Streams.h"
#include "rovane/strings/StringVar.h"
