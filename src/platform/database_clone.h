#pragma once
#include "platform/database.h"

// The tables of an open database as they stand, page by page into another file and without a flush: many times quicker
// than Database::Copy_To, but after a power cut the target may hold anything. For copies that prove themselves by a
// fingerprint. Errors as of Copy_To; a target that exists is replaced when the copy is whole.
void Clone_Database(const Database& source, const QString& target);
