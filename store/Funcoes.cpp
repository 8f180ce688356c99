#include "store/Funcoes.h"

#include "base/Ordem.h"
#include "store/Comandos.h"
#include "store/Semelhante.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <new>

// No exception may pass through the engine's C frames: the functions catch the one kind they can meet.

namespace
{
std::string_view TextoDe(sqlite3_value *valor)
{
    const auto *texto = reinterpret_cast<const char *>(sqlite3_value_text(valor));
    return texto ? std::string_view(texto, static_cast<std::size_t>(sqlite3_value_bytes(valor)))
                 : std::string_view();
}

QString QStringDe(sqlite3_value *valor)
{
    const std::string_view texto = TextoDe(valor);
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

void Devolver(sqlite3_context *contexto, const QString &texto)
{
    const QByteArray utf8 = texto.toUtf8();
    sqlite3_result_text(contexto, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

int Colacao(void *, int tamanhoA, const void *a, int tamanhoB, const void *b)
{
    return Ordem::Comparar(
        std::string_view(static_cast<const char *>(a), static_cast<std::size_t>(tamanhoA)),
        std::string_view(static_cast<const char *>(b), static_cast<std::size_t>(tamanhoB)));
}

/// like(pattern, text), which is how the engine writes "text like pattern".
void Like(sqlite3_context *contexto, int, sqlite3_value **valores)
{
    if (sqlite3_value_type(valores[0]) == SQLITE_NULL || sqlite3_value_type(valores[1]) == SQLITE_NULL)
        return; // the result stays NULL
    // Matching takes at most length times length.
    constexpr int kMaiorPadrao = 4096;
    if (sqlite3_value_bytes(valores[0]) > kMaiorPadrao) {
        sqlite3_result_error(contexto, "O texto procurado é longo demais", -1);
        return;
    }
    try {
        // The pattern is the same for every row as a rule: the engine keeps it compiled.
        const auto *padrao = static_cast<const Semelhante *>(sqlite3_get_auxdata(contexto, 0));
        const Semelhante novo(padrao ? std::string_view() : TextoDe(valores[0]));
        const bool casa = (padrao ? *padrao : novo).Casa(TextoDe(valores[1]));
        if (!padrao)
            sqlite3_set_auxdata(contexto, 0, new Semelhante(novo),
                                [](void *p) { delete static_cast<Semelhante *>(p); });
        sqlite3_result_int(contexto, casa);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(contexto);
    }
}

void Ucase(sqlite3_context *contexto, int, sqlite3_value **valores)
{
    if (sqlite3_value_type(valores[0]) == SQLITE_NULL)
        return;
    try {
        Devolver(contexto, Comandos::Maiusculas(QStringDe(valores[0])));
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(contexto);
    }
}

/// The day as ISO text, followed by the time when there is one other than midnight; empty when it is no date.
QString DataIso(const QString &texto)
{
    static const QRegularExpression formato(
        "^\\s*(?:(\\d{4})-(\\d{1,2})-(\\d{1,2})|(\\d{1,2})/(\\d{1,2})/(\\d{4}))"
        "(?:[ T](\\d{1,2}):(\\d{2})(?::(\\d{2}))?)?\\s*$");
    const QRegularExpressionMatch m = formato.match(texto);
    if (!m.hasMatch())
        return {};
    const auto numero = [&m](int grupo) { return m.captured(grupo).toInt(); };
    const QDate dia =
        m.hasCaptured(1) ? QDate(numero(1), numero(2), numero(3)) : QDate(numero(6), numero(5), numero(4));
    const QTime hora(numero(7), numero(8), numero(9));
    if (!dia.isValid() || !hora.isValid())
        return {};
    return dia.toString("yyyy-MM-dd") + (hora == QTime(0, 0) ? QString() : hora.toString(" HH:mm:ss"));
}

void Cdate(sqlite3_context *contexto, int, sqlite3_value **valores)
{
    try {
        const QString texto = QStringDe(valores[0]);
        const QString data = DataIso(texto);
        if (data.isEmpty())
            sqlite3_result_error(contexto,
                                 QString("CDATE: '%1' não é uma data").arg(texto).toUtf8().constData(), -1);
        else
            Devolver(contexto, data);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(contexto);
    }
}
} // namespace

int Funcoes::Registrar(sqlite3 *conexao)
{
    constexpr int kTexto = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    int rc = sqlite3_create_collation_v2(conexao, "PORTUGUES", SQLITE_UTF8, nullptr, Colacao, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function_v2(conexao, "like", 2, kTexto, nullptr, Like, nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function_v2(conexao, "ucase", 1, kTexto, nullptr, Ucase, nullptr, nullptr,
                                        nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function_v2(conexao, "CDATE", 1, kTexto, nullptr, Cdate, nullptr, nullptr,
                                        nullptr);
    return rc;
}

namespace
{
template <std::size_t N>
bool Entre(const std::array<const char *, N> &nomes, const char *nome)
{
    return std::any_of(nomes.begin(), nomes.end(),
                       [nome](const char *um) { return sqlite3_stricmp(nome, um) == 0; });
}
} // namespace

bool Funcoes::DosComandos(const char *nome)
{
    static constexpr std::array kNomes = {"like", "ucase", "cdate", "max", "min", "count"};
    return Entre(kNomes, nome);
}

bool Funcoes::DoLivro(const char *nome)
{
    static constexpr std::array kNomes = {"replace", "typeof"};
    return Entre(kNomes, nome) || DosComandos(nome);
}
