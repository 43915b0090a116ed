// Copying and releasing blocks. Each module has a runtime of its own with hidden symbols: libgnustep-base exports an
// obsolete _Block_copy that never copies a stack block, and binding to it would leave stored blocks dangling.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

__attribute__((visibility("hidden"))) void* _Block_copy(const void* block);
__attribute__((visibility("hidden"))) void _Block_release(const void* block);

#ifdef __cplusplus
}
#endif

#define Block_copy(...) ((__typeof(__VA_ARGS__))_Block_copy((const void*)(__VA_ARGS__)))
#define Block_release(...) _Block_release((const void*)(__VA_ARGS__))
