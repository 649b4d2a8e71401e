#include "RecentReadInfo.h"
