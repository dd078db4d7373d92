/* Bitmap fonts, text measuring, drawing and decoding. */
#ifndef VELATRIX_FONTS_H
#define VELATRIX_FONTS_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

VELATRIX_END_DECLS

#endif
