#include "scripting/VXSwfActionRecordContainer.h"

VXSwfActionRecordContainer::~VXSwfActionRecordContainer() = default;
