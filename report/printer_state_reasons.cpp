// The printer's error codes and the printer-state-reasons keywords they stand for.
#include "report/printer_state_reasons.h"

// clang-format off
// Kept: the order is the lookup's, not sorted, and the keyword numbers have gaps.
PrinterStateReason const PRINTER_STATE_REASONS[38] = {
    {{0x00, 0x00, 0x00}, {}},
    {{0x06, 0x02, 0x02}, {"com.velmo-error0001"}},
    {{0x09, 0x02, 0x02}, {"com.velmo-error0002"}},
    {{0x03, 0x01, 0x01}, {"com.velmo-error0003"}},
    {{0x08, 0x01, 0x01}, {"com.velmo-error0004"}},
    {{0x05, 0x02, 0x02}, {"com.velmo-error0005"}},
    {{0x02, 0x02, 0x02}, {"com.velmo-error0006"}},
    {{0x04, 0x03, 0x04}, {"com.velmo-error0007"}},
    {{0x07, 0x03, 0x03}, {"com.velmo-error0008"}},
    {{0x20, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x21, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x23, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x26, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x27, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x28, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x29, 0x07, 0x07}, {"com.velmo-error0009"}},
    {{0x0a, 0x05, 0x05}, {"com.velmo-error0010"}},
    {{0x0b, 0x05, 0x07}, {"com.velmo-error0011"}},
    {{0x30, 0x09, 0x07}, {"com.velmo-error0012"}},
    {{0x37, 0x09, 0x0f}, {"com.velmo-error0013"}},
    {{0x31, 0x09, 0x07}, {"com.velmo-error0013"}},
    {{0x32, 0x09, 0x0f}, {"com.velmo-error0013"}},
    {{0x33, 0x09, 0x0f}, {"com.velmo-error0013"}},
    {{0x34, 0x09, 0x07}, {"com.velmo-error0013"}},
    {{0x36, 0x09, 0x0f}, {"com.velmo-error0013"}},
    {{0x3a, 0x0a, 0x0f}, {"com.velmo-error0014"}},
    {{0x3b, 0x0a, 0x0f}, {"com.velmo-error0014"}},
    {{0x3c, 0x0a, 0x0f}, {"com.velmo-error0014"}},
    {{0x3d, 0x0a, 0x0f}, {"com.velmo-error0014"}},
    {{0x3e, 0x0a, 0x0f}, {"com.velmo-error0014"}},
    {{0x3f, 0x0a, 0x0f}, {"com.velmo-error0014"}},
    {{0x40, 0x0e, 0x0f}, {"com.velmo-error0014"}},
    {{0x0c, 0x0f, 0x00}, {"com.velmo-error0018"}},
    {{0x01, 0x06, 0x06}, {"com.velmo-error0020"}},
    {{0x0d, 0x08, 0x07}, {"com.velmo-error0021"}},
    {{0x0e, 0x08, 0x07}, {"com.velmo-error0021"}},
    {{0x10, 0x08, 0x08}, {"com.velmo-error0022"}},
    // Made by PrinterState::InternalSupplyLow; reported just like the printer's own 05 02 02.
    {{0xfe, 0xed, 0x01}, {"com.velmo-error0005"}},
};
// clang-format on
