// What a whole run of the filter has to do, whatever command file and backend bring.
#pragma once

#include "tests/fuzz/conversation.h"

// Walks through the run from the probe to the end; gives the exit status it has to have.
int walk_run(Conversation& conversation);
