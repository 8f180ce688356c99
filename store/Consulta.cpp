#include "store/Consulta.h"

#include "store/DadosRecordSet.h"
#include "store/ErroBanco.h"
#include "store/Motor.h"
#include "store/OrdemDeChegada.h"
#include "store/Plano.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>

#include <sqlite3.h>

#include <optional>
#include <string>

namespace
{
constexpr int kLinhasEntreOlhares = 64; // at the clock

std::string_view TextoDe(sqlite3_stmt *comando, int campo)
{
    const auto *texto = reinterpret_cast<const char *>(sqlite3_column_text(comando, campo));
    return texto ? std::string_view(texto, static_cast<std::size_t>(sqlite3_column_bytes(comando, campo)))
                 : std::string_view();
}

class Prazo
{
public:
    explicit Prazo(int ms)
        : m_ms(ms)
    {
        m_relogio.start();
    }
    bool Passou()
    {
        return m_ms >= 0 && ++m_vezes % kLinhasEntreOlhares == 0 && (m_ms == 0 || m_relogio.hasExpired(m_ms));
    }

private:
    QElapsedTimer m_relogio;
    int m_ms;
    int m_vezes = 0;
};
} // namespace

struct Consulta::Andamento {
    explicit Andamento(const Pedido &pedido)
        : conexao(pedido.motor ? pedido.motor
                               : std::make_shared<Motor>(pedido.caminho, pedido.esperaMs, pedido.soLeitura))
    {
    }
    std::shared_ptr<Motor> conexao;
    Motor &motor = *conexao;
    Plano plano;
    Motor::Comando comando;
    std::shared_ptr<RecordSet::Dados> dados = std::make_shared<RecordSet::Dados>();
    std::optional<OrdemDeChegada> ordem;

    // Distintos: the walk along the index; a value that comes again and again is leapt over.
    Motor::Comando seguinte;
    bool saltou = false;
    std::string ultimo;
    int repetidas = 0;
};

Consulta::Consulta(RecordSet pronta)
    : m_linhas(std::move(pronta))
    , m_completa(true)
{
}

Consulta::Consulta(const Pedido &pedido, AoTerminar aoTerminar, Respirar respirar)
    : m_andamento(std::make_unique<Andamento>(pedido))
    , m_aoTerminar(std::move(aoTerminar))
{
    Andamento &a = *m_andamento;
    // The statement is judged by itself, as it was written.
    a.comando = a.motor.PrepararConsulta(pedido.sql);
    for (int i = 0; i < sqlite3_column_count(a.comando.get()); ++i)
        a.dados->nomes += QString::fromUtf8(sqlite3_column_name(a.comando.get(), i));
    for (const QString &coluna : pedido.colunas)
        if (!a.dados->nomes.contains(coluna, Qt::CaseInsensitive))
            throw ErroBanco("Não foi possível executar a operação no banco de dados.",
                            "Campo não encontrado no resultado da consulta: " + coluna);
    if (!pedido.colunas.isEmpty())
        a.dados->nomes = pedido.colunas;

    a.plano = PlanoDe(pedido.sql, pedido.colunas, pedido.versao);
    if (a.plano.sql != pedido.sql) {
        // A book of this version may have lost an index to another tool.
        if (a.plano.tipo != Plano::Tipo::Direto && !a.motor.Serve(a.plano.sql))
            a.plano = PlanoDe(pedido.sql, pedido.colunas, 0);
        if (a.plano.sql != pedido.sql)
            a.comando = a.motor.PrepararPlano(a.plano.sql);
    }
    if (a.plano.tipo == Plano::Tipo::Distintos)
        a.seguinte = a.motor.PrepararPlano(a.plano.seguinte);
    if (a.plano.tipo != Plano::Tipo::Direto) {
        const RecordSet linhas(a.dados);
        a.ordem.emplace([linhas, campo = a.plano.campoDaOrdem](quint32 linha) {
            return linhas.Utf8Em(static_cast<int>(linha), campo);
        });
    }
    if (respirar && !pedido.motor)
        a.motor.Respirar(std::move(respirar));
    m_linhas = RecordSet(a.dados);
}

Consulta::~Consulta()
{
    Desanotar();
}

void Consulta::Anotar(std::shared_ptr<std::vector<Consulta *>> lista)
{
    if (m_completa)
        return;
    m_lista = std::move(lista);
    m_lista->push_back(this);
}

void Consulta::Desanotar()
{
    if (m_lista)
        std::erase(*m_lista, this);
    m_lista.reset();
}

void Consulta::AcrescentarLinha(sqlite3_stmt *comando)
{
    RecordSet::Dados &dados = *m_andamento->dados;
    const int campos = static_cast<int>(dados.nomes.size());
    for (int i = 0; i < campos; ++i) {
        switch (sqlite3_column_type(comando, i)) {
        case SQLITE_NULL:
            dados.AcrescentarNulo();
            break;
        case SQLITE_INTEGER:
            dados.AcrescentarInteiro(sqlite3_column_int64(comando, i));
            break;
        case SQLITE_FLOAT:
            dados.AcrescentarReal(sqlite3_column_double(comando, i));
            break;
        default: {
            const std::string_view texto = TextoDe(comando, i);
            if (!texto.data() && sqlite3_column_bytes(comando, i) > 0)
                m_andamento->motor.Falhar(SQLITE_NOMEM);
            dados.AcrescentarTexto(texto);
        }
        }
    }
    dados.FecharLinha();
    if (m_andamento->ordem)
        m_andamento->ordem->Chegou(sqlite3_column_type(comando, m_andamento->plano.campoDaOrdem) ==
                                   SQLITE_NULL);
}

bool Consulta::BuscarLinhas(int ms)
{
    Prazo prazo(ms);
    int rc = SQLITE_ROW;
    while ((rc = sqlite3_step(m_andamento->comando.get())) == SQLITE_ROW) {
        AcrescentarLinha(m_andamento->comando.get());
        if (prazo.Passou())
            return false;
    }
    if (rc != SQLITE_DONE)
        m_andamento->motor.Falhar(rc);
    return true;
}

bool Consulta::BuscarDistintas(int ms)
{
    // A leap costs as much as some thirty steps.
    constexpr int kRepetidasAntesDoSalto = 24;
    Andamento &a = *m_andamento;
    Prazo prazo(ms);
    if (a.dados->linhas == 0 && !a.plano.comNulo.isEmpty()) {
        const Motor::Comando nulo = a.motor.PrepararPlano(a.plano.comNulo);
        const int rc = sqlite3_step(nulo.get());
        if (rc == SQLITE_ROW) {
            a.dados->AcrescentarNulo();
            a.dados->FecharLinha();
            a.ordem->Chegou(true);
        } else if (rc != SQLITE_DONE) {
            a.motor.Falhar(rc);
        }
        a.plano.comNulo.clear();
    }
    for (;;) {
        sqlite3_stmt *comando = a.saltou ? a.seguinte.get() : a.comando.get();
        const int rc = sqlite3_step(comando);
        if (rc == SQLITE_DONE)
            return true;
        if (rc != SQLITE_ROW)
            a.motor.Falhar(rc);
        const std::string_view texto = TextoDe(comando, 0);
        const bool repetida =
            texto.size() == a.ultimo.size() &&
            sqlite3_strnicmp(texto.data(), a.ultimo.data(), static_cast<int>(texto.size())) == 0 &&
            (a.dados->linhas > 0 && !m_linhas.NuloEm(a.dados->linhas - 1, 0));
        if (!repetida) {
            AcrescentarLinha(comando);
            a.ultimo = texto;
            a.repetidas = 0;
        } else if (++a.repetidas > kRepetidasAntesDoSalto && sqlite3_column_type(comando, 0) == SQLITE_TEXT) {
            a.repetidas = 0;
            sqlite3_reset(comando);
            a.saltou = true;
            sqlite3_reset(a.seguinte.get());
            sqlite3_bind_text(a.seguinte.get(), 1, a.ultimo.data(), static_cast<int>(a.ultimo.size()),
                              SQLITE_TRANSIENT);
        }
        if (prazo.Passou())
            return false;
    }
}

bool Consulta::Avancar(int ms)
{
    // An event that runs while the engine breathes may come back here: what is under way goes on by itself.
    if (m_completa || m_andando)
        return m_completa;
    const QScopedValueRollback andando(m_andando, true);
    try {
        const bool fim =
            m_andamento->plano.tipo == Plano::Tipo::Distintos ? BuscarDistintas(ms) : BuscarLinhas(ms);
        if (fim)
            Encerrar();
    } catch (...) {
        m_completa = true;
        Desanotar();
        m_andamento.reset();
        throw;
    }
    return m_completa;
}

void Consulta::Encerrar()
{
    if (std::optional<OrdemDeChegada> &ordem = m_andamento->ordem) {
        const bool unicas = m_andamento->plano.tipo == Plano::Tipo::Distintos;
        if (ordem->Desviadas() > 0 || unicas)
            m_linhas = RecordSet(m_andamento->dados,
                                 std::make_shared<const std::vector<quint32>>(ordem->Terminar(unicas)));
    }
    m_completa = true;
    Desanotar();
    if (m_aoTerminar)
        m_aoTerminar(m_linhas);
    m_andamento.reset();
}
