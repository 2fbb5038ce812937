#pragma once

#include "records/Records.h"

// A small shop for the list screens, not in due order: one late rental, two open for
// the same customer, one of a film gone from the store, one returned, two cash lines.
Store listShop(Instant now);
