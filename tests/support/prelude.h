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

#include "platform/error.h"
#include "platform/files.h"
#include "support/errors.h"
#include "support/fixture.h"

using namespace Qt::StringLiterals;
