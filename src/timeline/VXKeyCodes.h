#pragma once

/// Keys that `VXFlintButtonCondAction::CondKeyPress` and `VXFlintClipActionRecord::KeyCode` name. From 32 to 126
/// a key is the ASCII code of its character.
enum VXKeyCodeEnum : unsigned char {
    kVXKeyNone = 0,
    kVXKeyLeft = 1,
    kVXKeyRight = 2,
    kVXKeyHome = 3,
    kVXKeyEnd = 4,
    kVXKeyInsert = 5,
    kVXKeyDelete = 6,
    kVXKeyBackspace = 8,
    kVXKeyEnter = 13,
    kVXKeyUp = 14,
    kVXKeyDown = 15,
    kVXKeyPageUp = 16,
    kVXKeyPageDown = 17,
    kVXKeyTab = 18,
    kVXKeyEscape = 19,
    kVXKeySpace = 32,
};
