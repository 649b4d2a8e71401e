#include "catalogue/CatalogueLog.h"

Q_LOGGING_CATEGORY(lcCatalogue, "quorin.catalogue")
