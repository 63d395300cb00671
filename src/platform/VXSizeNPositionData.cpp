#include "platform/VXSizeNPositionData.h"

VXSizeNPositionData::~VXSizeNPositionData() = default;
