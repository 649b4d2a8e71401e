#pragma once

#include "net/VORARecommentDTO.h"

// One comic of a category listing ("data" of "ios/pad/list.php"). A category entry
// carries exactly the fields of a feed entry and is read the same way.
using VORASortDTO = VORARecommentDTO;
