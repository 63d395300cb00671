#include "platform/IVXStream.h"

IVXStream::~IVXStream() = default;

IVXReadWriteStream::~IVXReadWriteStream() = default;
