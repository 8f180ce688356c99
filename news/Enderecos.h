#pragma once

#include <QString>
#include <QUrl>

/// The file a page means by an address: the last part of it, unescaped, without query. Empty for an address
/// of another place (one with a scheme or a host).
QString NomeDoEndereco(const QString &endereco);

/// The link as it may be opened: http, https or mailto (address, subject and body only), otherwise empty.
/// A mailto link with a control character in any of its parts, a line break above all, is none: it would add
/// header lines to a message that the user believes to be her own.
QUrl LinkSeguro(const QString &href, const QUrl &base);
