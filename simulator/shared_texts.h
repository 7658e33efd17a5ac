// The store behind platform/shared_text.h.
#pragma once

namespace simulator {

// No shared text exists any more; pointers that were given out stay valid.
void forgetSharedTexts();

}  // namespace simulator
