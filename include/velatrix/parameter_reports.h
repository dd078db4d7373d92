/* Device parameter reports: what the caller can tune on the pad. */
#ifndef VELATRIX_PARAMETER_REPORTS_H
#define VELATRIX_PARAMETER_REPORTS_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

VELATRIX_END_DECLS

#endif
