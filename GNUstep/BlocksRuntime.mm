// The blocks runtime that clang's compiled blocks call, following the published blocks ABI.
//
// Its symbols are hidden, so that each module binds to its own copy: libgnustep-base exports an obsolete _Block_copy
// that does not copy clang's stack blocks, and the separate libBlocksRuntime does not retain captured objects. The
// names are fixed by the ABI.
#include <Block.h>
#import <Foundation/NSObject.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

#define ORV_HIDDEN extern "C" __attribute__((visibility("hidden")))

ORV_HIDDEN void *_NSConcreteStackBlock[32], *_NSConcreteMallocBlock[32], *_NSConcreteGlobalBlock[32];
void *_NSConcreteStackBlock[32], *_NSConcreteMallocBlock[32], *_NSConcreteGlobalBlock[32];

namespace {

// Bits of a block's and a __block variable's flags.
constexpr int kHasCopyDispose = 1 << 25;
constexpr int kIsGlobal = 1 << 28;
constexpr int kByrefCountMask = 0xffff;

// What _Block_object_assign and _Block_object_dispose are told about the captured field.
constexpr int kFieldIsObject = 3;
constexpr int kFieldIsBlock = 7;
constexpr int kFieldIsByref = 8;
constexpr int kFieldIsWeak = 16;
constexpr int kCalledForByref = 128;

struct BlockDescriptor {
  unsigned long reserved;
  unsigned long size;
  void (*copy)(void *destination, const void *source);
  void (*dispose)(const void *block);
};

struct BlockLayout {
  void *isa;
  int flags;
  int references;
  void (*invoke)(void *, ...);
  BlockDescriptor *descriptor;
};

struct ByrefLayout {
  void *isa;
  ByrefLayout *forwarding;
  int flags;  // the low 16 bits count references; 0 while the variable is on the stack
  int size;
  void (*keep)(ByrefLayout *destination, ByrefLayout *source);
  void (*destroy)(ByrefLayout *variable);
};

std::atomic<int> &AsAtomic(int &value) {
  static_assert(sizeof(std::atomic<int>) == sizeof(int), "the ABI's counters are plain ints");
  return reinterpret_cast<std::atomic<int> &>(value);
}

void *Allocate(size_t size) {
  void *memory = malloc(size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

ByrefLayout *CopyByref(ByrefLayout *variable) {
  if (variable->forwarding != variable || (variable->flags & kByrefCountMask) != 0) {
    AsAtomic(variable->forwarding->flags).fetch_add(1);
    return variable->forwarding;
  }
  auto *copy = static_cast<ByrefLayout *>(Allocate(static_cast<size_t>(variable->size)));
  memcpy(copy, variable, static_cast<size_t>(variable->size));
  copy->flags = variable->flags | 2;  // one reference of the stack frame, one of the block
  copy->forwarding = copy;
  variable->forwarding = copy;
  if (variable->flags & kHasCopyDispose) variable->keep(copy, variable);
  return copy;
}

void ReleaseByref(ByrefLayout *variable) {
  variable = variable->forwarding;
  if ((variable->flags & kByrefCountMask) == 0) return;  // it never left the stack
  if ((AsAtomic(variable->flags).fetch_sub(1) & kByrefCountMask) != 1) return;
  if (variable->flags & kHasCopyDispose) variable->destroy(variable);
  free(variable);
}

}  // namespace

void *_Block_copy(const void *source) {
  auto *block = static_cast<BlockLayout *>(const_cast<void *>(source));
  if (!block || (block->flags & kIsGlobal) || block->isa == _NSConcreteGlobalBlock) return block;
  if (block->isa == _NSConcreteMallocBlock) {
    AsAtomic(block->references).fetch_add(1);
    return block;
  }
  auto *copy = static_cast<BlockLayout *>(Allocate(block->descriptor->size));
  memcpy(copy, block, block->descriptor->size);
  copy->isa = _NSConcreteMallocBlock;
  copy->references = 1;
  if (block->flags & kHasCopyDispose) block->descriptor->copy(copy, block);
  return copy;
}

void _Block_release(const void *source) {
  auto *block = static_cast<BlockLayout *>(const_cast<void *>(source));
  if (!block || block->isa != _NSConcreteMallocBlock) return;
  if (AsAtomic(block->references).fetch_sub(1) != 1) return;
  if (block->flags & kHasCopyDispose) block->descriptor->dispose(block);
  free(block);
}

ORV_HIDDEN void _Block_object_assign(void *destination, const void *source, int flags) {
  void *object = const_cast<void *>(source);
  void *&field = *static_cast<void **>(destination);
  field = object;
  if (flags & kCalledForByref) return;  // a __block variable does not retain, as without ARC on macOS
  const int kind = flags & ~kFieldIsWeak;
  if (kind == kFieldIsObject) field = [static_cast<id>(object) retain];
  if (kind == kFieldIsBlock) field = _Block_copy(object);
  if (kind == kFieldIsByref) field = CopyByref(static_cast<ByrefLayout *>(object));
}

ORV_HIDDEN void _Block_object_dispose(const void *source, int flags) {
  void *object = const_cast<void *>(source);
  if (flags & kCalledForByref) return;
  const int kind = flags & ~kFieldIsWeak;
  if (kind == kFieldIsObject) [static_cast<id>(object) release];
  if (kind == kFieldIsBlock) _Block_release(object);
  if (kind == kFieldIsByref) ReleaseByref(static_cast<ByrefLayout *>(object));
}
