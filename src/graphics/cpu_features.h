// Which vector instructions the fast paths may use: asked of the processor
// once, and switchable off so that the tests can run the portable code on
// a machine that has them too. Both paths give the same bytes.
#pragma once

namespace velatrix::graphics {

// 512-bit byte permutes (AVX-512 VBMI, BW and VL).
bool cpu_has_byte_permute();
// Off: the above answers false.
void allow_vector_kernels(bool allowed);

}  // namespace velatrix::graphics
