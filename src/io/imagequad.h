#pragma once

#include "base/types.h"

#include <array>

class MetaImage;

/// The rectangle an image covers and the arrays a game hands to OpenGL to draw it.
struct ImageQuad
{
    /// Bottom-left, bottom-right, top-right, top-left, in the image's frame
    /// (body coordinates for an image on a body, world coordinates otherwise).
    std::array<Vec2, 4> corners;
    /// The corners as x, y pairs.
    std::array<float, 8> vertexPointer;
    /// Texture coordinates of the corners (v = 0 is the image's top row); mirrored in u when flipped.
    std::array<float, 8> texCoordPointer;
    /// Two triangles over the corners.
    std::array<int, 6> drawElements;
};

/// The quad of an image: its height is its scale, its width the height times
/// the aspect scale times the file's width-to-height ratio (1 while the file
/// has not been read), rotated by its angle about its centre.
ImageQuad computeImageQuad(const MetaImage& image);
