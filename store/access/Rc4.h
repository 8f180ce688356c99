#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace Access
{
/// The bytes XORed with the RC4 stream of `chave`; doing it twice gives the bytes back. An empty key is an
/// error of the caller.
QByteArray Rc4(QByteArrayView chave, QByteArrayView bytes);
} // namespace Access
