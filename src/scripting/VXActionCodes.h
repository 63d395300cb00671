#pragma once

/// The published codes of actions, by the version of the format that brought them. Codes from 0x80 on have a
/// payload, which is named beside most of them; the others take what they need from the player's stack. The
/// library interprets none of them but the end of a list.
enum VXActionCodeEnum : unsigned char {
    kVXActionEnd = 0x00,  ///< ends a list

    // From version 3 on.
    kVXActionGotoFrame = 0x81,  ///< frame u16, counted from 0
    kVXActionGetURL = 0x83,     ///< address str, window str
    kVXActionNextFrame = 0x04,
    kVXActionPreviousFrame = 0x05,
    kVXActionPlay = 0x06,
    kVXActionStop = 0x07,
    kVXActionToggleQuality = 0x08,
    kVXActionStopSounds = 0x09,
    kVXActionWaitForFrame = 0x8A,  ///< frame u16, actions to skip u8
    kVXActionSetTarget = 0x8B,     ///< target str
    kVXActionGotoLabel = 0x8C,     ///< label str

    // From version 4 on.
    kVXActionAdd = 0x0A,
    kVXActionSubtract = 0x0B,
    kVXActionMultiply = 0x0C,
    kVXActionDivide = 0x0D,
    kVXActionEquals = 0x0E,
    kVXActionLess = 0x0F,
    kVXActionAnd = 0x10,
    kVXActionOr = 0x11,
    kVXActionNot = 0x12,
    kVXActionStringEquals = 0x13,
    kVXActionStringLength = 0x14,
    kVXActionStringExtract = 0x15,
    kVXActionPop = 0x17,
    kVXActionToInteger = 0x18,
    kVXActionGetVariable = 0x1C,
    kVXActionSetVariable = 0x1D,
    kVXActionSetTarget2 = 0x20,
    kVXActionStringAdd = 0x21,
    kVXActionGetProperty = 0x22,
    kVXActionSetProperty = 0x23,
    kVXActionCloneSprite = 0x24,
    kVXActionRemoveSprite = 0x25,
    kVXActionTrace = 0x26,
    kVXActionStartDrag = 0x27,
    kVXActionEndDrag = 0x28,
    kVXActionStringLess = 0x29,
    kVXActionRandomNumber = 0x30,
    kVXActionMBStringLength = 0x31,
    kVXActionCharToAscii = 0x32,
    kVXActionAsciiToChar = 0x33,
    kVXActionGetTime = 0x34,
    kVXActionMBStringExtract = 0x35,
    kVXActionMBCharToAscii = 0x36,
    kVXActionMBAsciiToChar = 0x37,
    kVXActionWaitForFrame2 = 0x8D,  ///< actions to skip u8
    kVXActionPush = 0x96,           ///< values, each a type u8 and its bytes
    kVXActionJump = 0x99,           ///< distance s16
    kVXActionGetURL2 = 0x9A,        ///< flags u8
    kVXActionIf = 0x9D,             ///< distance s16
    kVXActionCall = 0x9E,
    kVXActionGotoFrame2 = 0x9F,  ///< flags u8, with flag 2 a bias u16

    // From version 5 on.
    kVXActionDelete = 0x3A,
    kVXActionDelete2 = 0x3B,
    kVXActionDefineLocal = 0x3C,
    kVXActionCallFunction = 0x3D,
    kVXActionReturn = 0x3E,
    kVXActionModulo = 0x3F,
    kVXActionNewObject = 0x40,
    kVXActionDefineLocal2 = 0x41,
    kVXActionInitArray = 0x42,
    kVXActionInitObject = 0x43,
    kVXActionTypeOf = 0x44,
    kVXActionTargetPath = 0x45,
    kVXActionEnumerate = 0x46,
    kVXActionAdd2 = 0x47,
    kVXActionLess2 = 0x48,
    kVXActionEquals2 = 0x49,
    kVXActionToNumber = 0x4A,
    kVXActionToString = 0x4B,
    kVXActionPushDuplicate = 0x4C,
    kVXActionStackSwap = 0x4D,
    kVXActionGetMember = 0x4E,
    kVXActionSetMember = 0x4F,
    kVXActionIncrement = 0x50,
    kVXActionDecrement = 0x51,
    kVXActionCallMethod = 0x52,
    kVXActionNewMethod = 0x53,
    kVXActionBitAnd = 0x60,
    kVXActionBitOr = 0x61,
    kVXActionBitXor = 0x62,
    kVXActionBitLShift = 0x63,
    kVXActionBitRShift = 0x64,
    kVXActionBitURShift = 0x65,
    kVXActionStoreRegister = 0x87,   ///< register u8
    kVXActionConstantPool = 0x88,    ///< count u16, strings
    kVXActionWith = 0x94,            ///< size u16
    kVXActionDefineFunction = 0x9B,  ///< name str, arguments, size u16

    // From version 6 on.
    kVXActionInstanceOf = 0x54,
    kVXActionEnumerate2 = 0x55,
    kVXActionStrictEquals = 0x66,
    kVXActionGreater = 0x67,
    kVXActionStringGreater = 0x68,

    // From version 7 on.
    kVXActionThrow = 0x2A,
    kVXActionCastOp = 0x2B,
    kVXActionImplementsOp = 0x2C,
    kVXActionExtends = 0x69,
    kVXActionDefineFunction2 = 0x8E,  ///< name str, registers, arguments, size u16
    kVXActionTry = 0x8F,
};
