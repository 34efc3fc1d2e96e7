#pragma once
// Material checks at the end of harvesting.

class VMMeshBase;
class VReport;

// Raises "Multiple materials with the same name" once per pair (i, j), i < j, of materials whose
// names differ at most in letter case, with the later material's name, in pair order. 0 when all
// names differ, else -1.
int CheckDuplicateMaterialNames(const VMMeshBase& container, VReport& report);
