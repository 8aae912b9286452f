// Operator new in the place of the runtime's: counted, and able to fail.
#pragma once

// How often operator new was asked, and the blocks that it has given and that have not come back.
int allocation_count();
int living_blocks();

// Asked at each allocation from now on, whether it fails.
void let_allocations_fail(bool (*fails)());
