#pragma once

// Everything that a host can use, in one include.

#include "bitstream/VXBitStream.h"
#include "bitstream/VXByteBlock.h"
#include "bitstream/VXPool.h"
#include "framework/IVXSwfIdGenerator.h"
#include "framework/IVXSwfTagHolder.h"
#include "framework/VXFlintFile.h"
#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfControlTag.h"
#include "framework/VXSwfDefinitionTag.h"
#include "framework/VXSwfTag.h"
#include "framework/VXSwfTagFactory.h"
#include "framework/VXSwfTagSet.h"
#include "graphics/VXFlintCxForm.h"
#include "graphics/VXFlintMatrix.h"
#include "graphics/VXFlintRGB.h"
#include "graphics/VXFlintRectangle.h"
#include "graphics/VXTwips.h"
#include "timeline/VXSwfDefineSpriteTag.h"
#include "timeline/VXSwfFileAttributesTag.h"
