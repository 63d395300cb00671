#include "platform/system/VXSystemPages_p.h"

void* VXSystemPages::Map(std::size_t) { return nullptr; }

void* VXSystemPages::Remap(void*, std::size_t, std::size_t) { return nullptr; }

void VXSystemPages::Unmap(void*, std::size_t) {}

void VXSystemPages::GiveUp(void*, std::size_t) {}

void VXSystemPages::PreferHuge(void*, std::size_t) {}
