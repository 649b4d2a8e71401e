#include "VORABookShelf.h"
