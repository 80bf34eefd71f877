#pragma once

#include "io/jsonvalues.h"

class MetaBody;
class MetaFixture;
class MetaWorld;

/// A body record with its fixtures (the scene file's "metabody" entries).
rapidjson::Value writeBodyRecord(const MetaBody& body, const JsonEncoder& encoder);
/// A fixture record with its shapes; the fixture's vertex list is written
/// into every shape record as "vertices".
rapidjson::Value writeFixtureRecord(const MetaFixture& fixture, const JsonEncoder& encoder);

/// Reads a body record with its fixtures into the world under the id (0
/// allocates one; an id in use is replaced by a fresh one with a warning).
/// An unknown body type becomes static with a warning. Fixture records
/// without an id are skipped and counted in skippedFixtures when given.
/// Returns the body, or null when no id could be had.
MetaBody* readBodyRecord(MetaWorld& world, const rapidjson::Value& record, ItemId id, int* skippedFixtures = nullptr);

/// Reads a fixture record onto a body of the world under the id (0 or an id
/// in use allocates a fresh one). The vertex list is taken from the first
/// shape record holding "vertices", else from a fixture-level "vertices".
/// Returns the fixture, or null when the body is null or no id could be had.
MetaFixture* readFixtureRecord(MetaWorld& world, MetaBody* body, const rapidjson::Value& record, ItemId id);

/// Load-time repair of every shape of the body's fixtures for its vertex count.
void conformBodyShapes(MetaBody& body);
