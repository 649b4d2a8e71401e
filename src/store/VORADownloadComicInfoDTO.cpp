#include "VORADownloadComicInfoDTO.h"
