// What nearly every test includes.
#pragma once

#include "janelas.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtTest>
