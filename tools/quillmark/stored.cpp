// `quillmark regions`, `screens` and `resources`: what the pad holds.
#include <cstdio>

#include "commands.h"

namespace quillmark {

int run_regions(const GlobalOptions& options) { throw Refused("regions: not written yet"); }
int run_screens(const GlobalOptions& options) { throw Refused("screens: not written yet"); }
int run_resources(const GlobalOptions& options) { throw Refused("resources: not written yet"); }
int run_firmware(const GlobalOptions& options, const FirmwareOptions&) { throw Refused("firmware: not written yet"); }

}  // namespace quillmark
