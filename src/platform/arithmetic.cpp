// The same input gives the same bits on every machine. That holds where each operation is rounded to the type it is
// written in; what cannot promise this is refused here, at compile time, rather than played differently.

#include <cfloat>
#include <limits>

static_assert(FLT_EVAL_METHOD == 0,
              "floating-point arithmetic is wider than its types; on 32-bit x86 use -mfpmath=sse");
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<float>::digits == 24,
              "float is not IEEE single precision");
static_assert(std::numeric_limits<double>::is_iec559 && std::numeric_limits<double>::digits == 53,
              "double is not IEEE double precision");
#ifdef __FAST_MATH__
#error "fast-math reorders operations: build without it"
#endif
