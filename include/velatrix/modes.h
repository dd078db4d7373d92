/* Operating modes, calibration, error-correction table, device identifier and firmware. */
#ifndef VELATRIX_MODES_H
#define VELATRIX_MODES_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

VELATRIX_END_DECLS

#endif
