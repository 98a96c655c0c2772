// Umbrella header: everything a program needs from Rovane.
#pragma once

#include "rovane/scalars/Scalars.h"
#include "rovane/scalars/RovaneUtils.h"
