#include "formats/JpegLibrary.h"

#include <jerror.h>

namespace {
JpegErrors& ErrorsOf(j_common_ptr jpeg)
{
    return *reinterpret_cast<JpegErrors*>(jpeg->err);
}

void StayQuiet(j_common_ptr) {}

/// Called for what the library would go on after.
void JudgeWarning(j_common_ptr jpeg, int level)
{
    if (level >= 0) return; // only a trace
    switch (jpeg->err->msg_code) {
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_ARITH_BAD_CODE:
    case JWRN_JPEG_EOF:
    case JWRN_MUST_RESYNC:
    case JWRN_TOO_MUCH_DATA: JpegLibrary::GiveUp(jpeg);
    default: break; // odd, but no pixel is lost
    }
}
} // namespace

jpeg_error_mgr* JpegLibrary::InitErrors(JpegErrors& errors)
{
    jpeg_std_error(&errors.manager);
    errors.manager.error_exit = GiveUp;
    errors.manager.output_message = StayQuiet;
    errors.manager.emit_message = JudgeWarning;
    errors.isOutOfMemory = false;
    errors.isCancelled = false;
    return &errors.manager;
}

void JpegLibrary::GiveUp(j_common_ptr jpeg)
{
    JpegErrors& errors = ErrorsOf(jpeg);
    if (jpeg->err->msg_code == JERR_OUT_OF_MEMORY) errors.isOutOfMemory = true;
    std::longjmp(errors.escape, 1);
}
