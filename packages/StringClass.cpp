#include "packages/StringClass.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

void StringClass::SetBufferSize(qint32 caracteres)
{
    if (caracteres < 1)
        throw std::invalid_argument("StringClass: o passo de crescimento deve ser positivo");
    m_BufferSize = caracteres;
}

QString StringClass::Value() &&
{
    m_buffer.truncate(std::exchange(m_usado, 0));
    return std::exchange(m_buffer, QString());
}

void StringClass::SetValue(QStringView texto)
{
    const QString copia = texto.toString(); // `texto` may lie in the buffer
    m_buffer.clear();
    m_usado = 0;
    Append(copia);
}

void StringClass::Append(QStringView texto)
{
    constexpr qint64 kMaximo = std::numeric_limits<qint32>::max();
    const qint64 needed = qint64(m_usado) + texto.size();
    if (needed > kMaximo)
        throw std::overflow_error("StringClass: texto grande demais");

    const qint64 falta = needed - m_buffer.size();
    if (falta > 0) {
        const qint64 passos = (falta + m_BufferSize - 1) / m_BufferSize;
        // The last step may not fit into 31 bits; the content does.
        const qint64 tamanho = std::min(m_buffer.size() + passos * m_BufferSize, kMaximo);
        m_buffer.resize(tamanho, u' ');
    }
    std::copy(texto.begin(), texto.end(), m_buffer.data() + m_usado);
    m_usado = static_cast<qint32>(needed);
}
