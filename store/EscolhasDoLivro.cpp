#include "store/EscolhasDoLivro.h"

#include "base/Ordem.h"
#include "base/PaginaCodigo.h"
#include "store/Banco.h"
#include "store/Consulta.h"
#include "store/ErroBanco.h"

#include <algorithm>

namespace
{
constexpr int kDeUmaVezMs = 8;
constexpr int kFatiaMs = 4;

/// Whether the book's order sets the letter case of all characters aside.
bool OrdemSemCaixa(QStringView texto)
{
    return std::all_of(texto.begin(), texto.end(),
                       [](QChar c) { return PaginaCodigo::ByteDe(c.unicode()) >= 0; });
}

bool Ascii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

char Minuscula(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c;
}
} // namespace

EscolhasDoLivro::EscolhasDoLivro(const Banco &banco, const QString &sql, AoFalhar aoFalhar)
    : m_consulta(banco.AbrirConsulta(sql, {}, Banco::Guardar::Sim))
    , m_aoFalhar(std::move(aoFalhar))
{
    if (!m_consulta->Avancar(kDeUmaVezMs)) {
        QObject::connect(&m_vez, &QTimer::timeout, &m_vez, [this] { Avancar(kFatiaMs); });
        m_vez.start(0);
        return;
    }
    m_valores = m_consulta->Linhas();
    m_consulta.reset();
}

EscolhasDoLivro::~EscolhasDoLivro() = default;

void EscolhasDoLivro::Avancar(int ms)
{
    if (!m_consulta)
        return;
    try {
        if (!m_consulta->Avancar(ms))
            return;
    } catch (const ErroBanco &erro) {
        // From within a question of a view: the answer is what there is, and the failure is told later.
        QTimer::singleShot(0, &m_vez, [this, erro] {
            if (m_aoFalhar)
                m_aoFalhar(erro);
        });
    }
    m_vez.stop();
    m_valores = m_consulta->Linhas();
    m_consulta.reset();
}

int EscolhasDoLivro::Quantos()
{
    Avancar(-1);
    return m_valores.RecordCount();
}

QString EscolhasDoLivro::Item(int qual)
{
    Avancar(-1);
    return m_valores.TextoEm(qual, 0);
}

int EscolhasDoLivro::Procurar(QStringView prefixo)
{
    if (prefixo.isEmpty())
        return -1;
    const int quantos = Quantos();
    const auto comeca = [this, prefixo](int qual) {
        return Item(qual).startsWith(prefixo, Qt::CaseInsensitive);
    };
    if (!OrdemSemCaixa(prefixo)) {
        for (int i = 0; i < quantos; ++i)
            if (comeca(i))
                return i;
        return -1;
    }
    // All that begin so stand between the prefix and the prefix followed by the last character of all.
    const std::string inicio = prefixo.toUtf8().toStdString();
    const std::string fim = inicio + "\xF4\x8F\xBF\xBF";
    int de = 0;
    int ate = quantos;
    while (de < ate) {
        const int meio = de + (ate - de) / 2;
        if (Ordem::Comparar(m_valores.Utf8Em(meio, 0), inicio) < 0)
            de = meio + 1;
        else
            ate = meio;
    }
    for (int i = de; i < quantos && Ordem::Comparar(m_valores.Utf8Em(i, 0), fim) <= 0; ++i)
        if (comeca(i))
            return i;
    return -1;
}

bool EscolhasDoLivro::Contem(const QString &valor)
{
    const QString procurado = valor.toUpper();
    const std::string utf8 = valor.toUtf8().toStdString();
    const int quantos = Quantos();
    for (int i = 0; i < quantos; ++i) {
        const std::string_view item = m_valores.Utf8Em(i, 0);
        // Plain letters at the beginning tell most apart without making a text of the value.
        if (!item.empty() && !utf8.empty() && Ascii(item[0]) && Ascii(utf8[0]) &&
            Minuscula(item[0]) != Minuscula(utf8[0]))
            continue;
        if (m_valores.TextoEm(i, 0).toUpper() == procurado)
            return true;
    }
    return false;
}
