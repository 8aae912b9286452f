// How many times the program has asked for memory.
#pragma once

int allocation_count();
