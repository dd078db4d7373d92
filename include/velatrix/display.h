/* Display content transfer: bitmaps and text on the pad, pixel read-back. */
#ifndef VELATRIX_DISPLAY_H
#define VELATRIX_DISPLAY_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

VELATRIX_END_DECLS

#endif
