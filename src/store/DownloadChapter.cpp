#include "DownloadChapter.h"
