#include "Bookshelf.h"
