#include "Bookmark.h"
