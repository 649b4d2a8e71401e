#include "DownloadComic.h"
