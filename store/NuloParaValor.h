#pragma once

#include <QVariant>

/// "" for the database's NULL, else the value unchanged. Every read of a nullable column goes through it.
QVariant NuloParaValor(const QVariant &valor);
