#pragma once

#include "DemoStage.h"

// The pages of the demo movie, each in a source of its own.

/// Primitives, paths of all kinds of edges, and placements with every kind of matrix.
void AddDemoShapes(DemoStage& stage);
/// Solid colours, gradients, bitmaps.
void AddDemoFills(DemoStage& stage);
/// Every pattern, width, join and cap.
void AddDemoStrokes(DemoStage& stage);
/// Static text in several styles, and fields to type in.
void AddDemoText(DemoStage& stage);
/// Both kinds of JPEG and the three lossless formats.
void AddDemoPictures(DemoStage& stage);
/// Buttons with states, sounds and scripts.
void AddDemoButtons(DemoStage& stage);
/// Shadows, colour transforms, masks, sprites.
void AddDemoPlacements(DemoStage& stage);
/// What scripts, calls and exports do, and what is carried unseen.
void AddDemoScripts(DemoStage& stage);
/// Another movie as a sprite, and parts of it.
void AddDemoMerge(DemoStage& stage);
