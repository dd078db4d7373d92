/* Velatrix Quillmark: the C API of the signature pad driver library.
 * Every function begins with velatrix_; records keep the member order and
 * sizes the protocol fixes. Include this one header. */
#ifndef VELATRIX_QUILLMARK_H
#define VELATRIX_QUILLMARK_H

#include "velatrix/common.h"
#include "velatrix/list.h"
#include "velatrix/error.h"
#include "velatrix/threads.h"
#include "velatrix/debug.h"
#include "velatrix/info_reports.h"
#include "velatrix/device.h"
#include "velatrix/transport.h"
#include "velatrix/parameter_reports.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/input.h"
#include "velatrix/modes.h"
#include "velatrix/bitmap.h"
#include "velatrix/fonts.h"
#include "velatrix/display.h"
#include "velatrix/host.h"

#endif
