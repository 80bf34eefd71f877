#pragma once

#include "io/jsonvalues.h"

class MetaImage;
class MetaWorld;

/// An image record; the attached body is written by id under "body" (0 for none).
rapidjson::Value writeImageRecord(const MetaImage& image, const JsonEncoder& encoder);

/// Reads an image record into the world under the id (0 allocates one; an id
/// in use is replaced with a warning). With copy set the body is found under
/// "body-copy". An unknown body id leaves the image unattached.
MetaImage* readImageRecord(MetaWorld& world, const rapidjson::Value& record, ItemId id, bool copy = false);
