#pragma once

/// The comparison that `qsort` takes for floats, larger values first.
int CompareDistancesDescending(const void* a, const void* b);
