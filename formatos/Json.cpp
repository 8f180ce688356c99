#include "formatos/Json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
using namespace Formatos;

bool EHexa(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// The outermost value of a text, well-formed where that can be told; "" when it is none or too deep.
class Conserto
{
public:
    explicit Conserto(QStringView texto)
        : m_texto(texto)
    {
    }

    QString Fazer()
    {
        qsizetype i = 0;
        while (i < m_texto.size() && m_texto[i] != u'{' && m_texto[i] != u'[')
            ++i;
        // "<![CDATA[" and "//<![CDATA[" stand before the value.
        for (const QStringView abertura : {QStringView(u"<![CDATA["), QStringView(u"/*"), QStringView(u"<!--")})
            if (const qsizetype achado = m_texto.first(std::min<qsizetype>(m_texto.size(), 200)).indexOf(abertura);
                achado >= 0 && achado < i)
                i = ProximaAbertura(achado + abertura.size());
        for (; i < m_texto.size(); ++i) {
            const QChar c = m_texto[i];
            if (c == u'"') {
                i = CopiarTexto(i);
                continue;
            }
            if (c == u'/' && i + 1 < m_texto.size() && (m_texto[i + 1] == u'/' || m_texto[i + 1] == u'*')) {
                i = PularComentario(i);
                continue;
            }
            if (c == u'{' || c == u'[') {
                if (++m_abertos > kMaiorProfundidadeJson)
                    return {};
            } else if (c == u'}' || c == u']') {
                if (m_ultimo == u',')
                    m_saida[m_lugar] = u' ';
                Por(c);
                if (--m_abertos == 0)
                    return m_saida;
                continue;
            } else if (c == u',') {
                if (m_ultimo == u',' || m_ultimo == u'[' || m_ultimo == u'{')
                    continue;
            }
            Por(c.unicode() < 0x20 ? QChar(u' ') : c);
        }
        return {};
    }

private:
    void Por(QChar c)
    {
        if (c != u' ') {
            m_ultimo = c;
            m_lugar = m_saida.size();
        }
        m_saida += c;
    }

    qsizetype ProximaAbertura(qsizetype i) const
    {
        while (i < m_texto.size() && m_texto[i] != u'{' && m_texto[i] != u'[')
            ++i;
        return i;
    }

    qsizetype PularComentario(qsizetype i) const
    {
        if (m_texto[i + 1] == u'/') {
            while (i < m_texto.size() && m_texto[i] != u'\n')
                ++i;
            return i;
        }
        const qsizetype fim = m_texto.indexOf(QStringView(u"*/"), i + 2);
        return fim < 0 ? m_texto.size() : fim + 1;
    }

    qsizetype CopiarTexto(qsizetype i)
    {
        Por(u'"');
        for (++i; i < m_texto.size(); ++i) {
            const QChar c = m_texto[i];
            if (c == u'"') {
                m_saida += u'"';
                return i;
            }
            if (c == u'\\' && i + 1 < m_texto.size()) {
                const QChar seguinte = m_texto[i + 1];
                bool certa = QStringView(u"\"\\/bfnrt").contains(seguinte);
                if (seguinte == u'u' && i + 5 < m_texto.size())
                    certa = EHexa(m_texto[i + 2]) && EHexa(m_texto[i + 3]) && EHexa(m_texto[i + 4]) &&
                            EHexa(m_texto[i + 5]);
                if (certa)
                    m_saida += c;
                m_saida += seguinte.unicode() < 0x20 ? QChar(u' ') : seguinte;
                ++i;
                continue;
            }
            if (c == u'\n' || c == u'\r')
                m_saida += "\\n";
            else
                m_saida += c.unicode() < 0x20 ? QChar(u' ') : c;
        }
        return i;
    }

    QStringView m_texto;
    QString m_saida;
    int m_abertos = 0;
    QChar m_ultimo;        ///< the last sign that is no blank, outside texts
    qsizetype m_lugar = 0; ///< where it stands
};

bool Fundo(QStringView texto)
{
    int abertos = 0;
    bool dentro = false;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto[i];
        if (dentro) {
            if (c == u'\\')
                ++i;
            else if (c == u'"')
                dentro = false;
        } else if (c == u'"') {
            dentro = true;
        } else if (c == u'{' || c == u'[') {
            if (++abertos > kMaiorProfundidadeJson)
                return true;
        } else if (c == u'}' || c == u']') {
            --abertos;
        }
    }
    return false;
}

std::optional<QJsonValue> Interpretar(const QString &texto)
{
    QJsonParseError erro;
    const QJsonDocument documento = QJsonDocument::fromJson(texto.toUtf8(), &erro);
    if (erro.error != QJsonParseError::NoError)
        return std::nullopt;
    return documento.isArray() ? QJsonValue(documento.array()) : QJsonValue(documento.object());
}

bool MesmoNome(QStringView chave, const char *nome)
{
    const char *n = nome;
    for (const QChar c : chave) {
        if (c == u'_')
            continue;
        while (*n == '_')
            ++n;
        if (*n == '\0' || c.toLower() != QChar::fromLatin1(*n).toLower())
            return false;
        ++n;
    }
    return *n == '\0';
}
} // namespace

std::optional<QJsonValue> Formatos::LerJson(const QString &texto)
{
    if (Fundo(texto))
        return std::nullopt;
    if (const std::optional<QJsonValue> valor = Interpretar(texto))
        return valor;
    const QString consertado = Conserto(texto).Fazer();
    return consertado.isEmpty() ? std::nullopt : Interpretar(consertado);
}

QJsonValue Formatos::Campo(const QJsonObject &objeto, const char *nome)
{
    if (const auto certo = objeto.constFind(QLatin1String(nome)); certo != objeto.constEnd())
        return *certo;
    for (auto it = objeto.constBegin(); it != objeto.constEnd(); ++it)
        if (MesmoNome(it.key(), nome))
            return *it;
    return QJsonValue(QJsonValue::Undefined);
}

QString Formatos::TextoDe(const QJsonValue &valor)
{
    switch (valor.type()) {
    case QJsonValue::String:
        return valor.toString();
    case QJsonValue::Double: {
        const double numero = valor.toDouble();
        return QString::number(numero, 'g', 15);
    }
    case QJsonValue::Array: {
        const QJsonArray lista = valor.toArray();
        for (const QJsonValue elemento : lista)
            if (!elemento.isArray())
                if (const QString texto = TextoDe(elemento); !texto.trimmed().isEmpty())
                    return texto;
        return {};
    }
    case QJsonValue::Object: {
        const QJsonObject objeto = valor.toObject();
        for (const char *nome : {"name", "text", "@value", "maxValue", "url", "@id"})
            if (const QJsonValue campo = Campo(objeto, nome); campo.isString() || campo.isDouble())
                if (const QString texto = TextoDe(campo); !texto.trimmed().isEmpty())
                    return texto;
        return {};
    }
    default:
        return {};
    }
}

QStringList Formatos::TextosDe(const QJsonValue &valor)
{
    QStringList textos;
    if (valor.isArray()) {
        const QJsonArray lista = valor.toArray();
        for (const QJsonValue elemento : lista)
            if (const QString texto = TextoDe(elemento); !texto.trimmed().isEmpty())
                textos += texto;
    } else if (const QString texto = TextoDe(valor); !texto.trimmed().isEmpty()) {
        textos += texto;
    }
    return textos;
}

double Formatos::NumeroDe(const QJsonValue &valor)
{
    if (valor.isDouble())
        return valor.toDouble();
    return TextoDe(valor).replace(u',', u'.').toDouble();
}
