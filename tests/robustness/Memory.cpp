#include "robustness/Memory.h"

#include <malloc.h>
#include <zlib.h>

#include "support/Test.h"

namespace {

std::size_t theLive = 0;
std::size_t thePeak = 0;
unsigned int theCountdown = 0;
bool theRefusing = false;
bool theAllLater = false;
bool theRefusal = false;

bool IsRefused() {
    if (!theRefusing) return false;
    if (theRefusal) return theAllLater;
    theRefusal = --theCountdown == 0;
    return theRefusal;
}

void Add(void* block) {
    theLive += malloc_usable_size(block);
    thePeak = std::max(thePeak, theLive);
}

}  // namespace

extern "C" {

void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
int __real_deflateInit_(z_stream* stream, int level, const char* version, int size);
int __real_inflateInit_(z_stream* stream, const char* version, int size);

void __wrap_free(void* block) {
    if (block != nullptr) theLive -= malloc_usable_size(block);
    __real_free(block);
}

void* __wrap_realloc(void* block, std::size_t size) {
    if (IsRefused()) return nullptr;
    const std::size_t old = block == nullptr ? 0 : malloc_usable_size(block);
    void* moved = __real_realloc(block, size);
    if (moved == nullptr) return nullptr;
    Add(moved);  // for a moment both are there
    theLive -= old;
    return moved;
}

// zlib takes its memory when it begins.

int __wrap_deflateInit_(z_stream* stream, int level, const char* version, int size) {
    return IsRefused() ? Z_MEM_ERROR : __real_deflateInit_(stream, level, version, size);
}

int __wrap_inflateInit_(z_stream* stream, const char* version, int size) {
    return IsRefused() ? Z_MEM_ERROR : __real_inflateInit_(stream, version, size);
}

// The pool, so that each of its blocks counts by itself, with the names that calls of it are linked by.

void* __wrap__ZN6VXPool8AllocateEm(std::size_t size) { return ::operator new(size); }
void __wrap__ZN6VXPool4FreeEPvm(void* block, std::size_t) { ::operator delete(block); }
void* __wrap__ZN6VXPool6ResizeEPvmm(void* buffer, std::size_t, std::size_t size) {
    return __wrap_realloc(buffer, size);
}
void __wrap__ZN6VXPool10FreeBufferEPvm(void* buffer, std::size_t) { __wrap_free(buffer); }
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return __wrap_realloc(nullptr, std::max<std::size_t>(size, 1));
}

void* operator new(std::size_t size) {
    void* block = operator new(size, std::nothrow);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}
void operator delete(void* block) noexcept { __wrap_free(block); }
void operator delete(void* block, std::size_t) noexcept { __wrap_free(block); }
void operator delete[](void* block) noexcept { __wrap_free(block); }
void operator delete[](void* block, std::size_t) noexcept { __wrap_free(block); }

std::size_t Memory::GetLive() { return theLive; }
std::size_t Memory::GetPeak() { return thePeak; }
void Memory::ResetPeak() { thePeak = theLive; }

void Memory::Begin(unsigned int n, bool allLater) {
    theCountdown = n;
    theAllLater = allLater;
    theRefusal = false;
    theRefusing = true;
}

bool Memory::End() {
    theRefusing = false;
    return theRefusal;
}
