#pragma once
// What every test may use without naming it; compiled once and put in front of each test file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QByteArrayList>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "platform/database.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "platform/shell.h"
#include "platform/surface.h"
#include "state/coordinate_state.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/columns.h"
#include "store/entry.h"
#include "store/entry_edit.h"
#include "store/file_names.h"
#include "store/header_row.h"
#include "store/settings.h"
#include "store/table_file.h"
#include "store/vertex_table.h"
#include "support/errors.h"
#include "support/fixture.h"

using namespace Qt::StringLiterals;

#include "support/table_fixture.h"
