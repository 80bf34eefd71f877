#pragma once

#include <QByteArray>
#include <QString>

/// The JSON Schemas of the files the program writes (docs/schema).
enum class FileSchema
{
    Scene,     ///< docs/schema/plax.schema.json
    RawInfo,   ///< docs/schema/rawinfo.schema.json
};

/// Checks JSON text against a schema with RapidJSON's validator (JSON Schema
/// draft 4, as the schema files are written). Empty when the text satisfies
/// the schema; otherwise what does not: the member's JSON pointer, the
/// schema keyword it fails and where in the schema ("/body/0/type: enum at
/// #/definitions/body/properties/type"), or why the text is not JSON.
QString schemaViolation(FileSchema schema, const QByteArray& json);

/// The same for a file; a file that cannot be read is a violation too.
QString fileSchemaViolation(FileSchema schema, const QString& path);
