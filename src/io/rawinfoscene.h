#pragma once

#include <rapidjson/document.h>

#include <QString>

#include <memory>

class MetaWorld;

/// Builds a scene from the top level of a raw-info (b2dJson) file that has no
/// "metaworld". Returns null, with the reason logged, when it cannot.
std::unique_ptr<MetaWorld> createWorldFromRawInfo(const rapidjson::Value& root, const QString& path);
