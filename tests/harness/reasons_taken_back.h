// The reasons that a good printer's report takes back, written out by hand: the transcript of a
// complete run and the benchmark's floor both read them here.
#pragma once

// LINE(text) for each, in the order in which they are written.
#define REASONS_TAKEN_BACK(LINE)        \
  LINE("STATE: -com.velmo-error0001\n") \
  LINE("STATE: -com.velmo-error0002\n") \
  LINE("STATE: -com.velmo-error0003\n") \
  LINE("STATE: -com.velmo-error0004\n") \
  LINE("STATE: -com.velmo-error0005\n") \
  LINE("STATE: -com.velmo-error0006\n") \
  LINE("STATE: -com.velmo-error0007\n") \
  LINE("STATE: -com.velmo-error0008\n") \
  LINE("STATE: -com.velmo-error0009\n") \
  LINE("STATE: -com.velmo-error0010\n") \
  LINE("STATE: -com.velmo-error0011\n") \
  LINE("STATE: -com.velmo-error0012\n") \
  LINE("STATE: -com.velmo-error0013\n") \
  LINE("STATE: -com.velmo-error0014\n") \
  LINE("STATE: -com.velmo-error0018\n") \
  LINE("STATE: -com.velmo-error0020\n") \
  LINE("STATE: -com.velmo-error0021\n") \
  LINE("STATE: -com.velmo-error0022\n") \
  LINE("STATE: -com.velmo-error0023\n")
