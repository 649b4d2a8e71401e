#include "ReadHistory.h"
