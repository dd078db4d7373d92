// The quillmark commands other than the trivial ones in main.cpp.
#pragma once

#include <string>

namespace quillmark {

// Runs the demo on the first pad (a virtual one when none is attached) and
// writes its images into out_dir. Returns the process exit status.
int run_demo(const std::string& out_dir);

}  // namespace quillmark
