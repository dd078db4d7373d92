/* The process-wide last-error text. */
#ifndef VELATRIX_ERROR_H
#define VELATRIX_ERROR_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

/* Size of the buffer: at most 1022 characters of text are kept. */
#define VELATRIX_ERROR_BUFFER_SIZE 1024

VELATRIX_API int velatrix_report_error_internal(const char* format, ...) VELATRIX_PRINTF(1, 2);
VELATRIX_API const char* velatrix_get_last_error(void);
VELATRIX_API const char* velatrix_get_last_error_internal(void);

VELATRIX_END_DECLS

#endif
