// Operator new in the place of the runtime's: counted, and able to fail.
#pragma once

// The blocks that operator new has given and that have not come back.
int living_blocks();
