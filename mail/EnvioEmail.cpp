#include "mail/EnvioEmail.h"

#include "base/Abridor.h"
#include "base/ArquivoSeguro.h"
#include "base/Avisos.h"
#include "base/Numero.h"
#include "base/Operacao.h"
#include "base/Ponteiro.h"
#include "base/Telas.h"
#include "base/Texto.h"
#include "mail/MensagemReceita.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QFile>

namespace
{
// Packages refuse kinds from 2 on, the e-mail from 3 on; the difference is meant.
constexpr double kTipoQueNaoSeEnvia = 3;
} // namespace

EnvioEmail::EnvioEmail(const Banco &banco, const Figuras &figuras, Avisos &avisos, const Telas &telas,
                       Abridor &abridor, const QString &site)
    : m_banco(banco)
    , m_figuras(figuras)
    , m_avisos(avisos)
    , m_telas(telas)
    , m_abridor(abridor)
    , m_site(site)
{
}

void EnvioEmail::imgEmail_Click(const ReceitaNaTela &receita)
{
    const Operacao operacao(Operacao::Tipo::Email);
    if (m_telas.TelaAtual() != "Detalhe") {
        m_avisos.Avisar("Necessário estar na Tela de Dados de uma Receita para o Envio!",
                        Avisos::Icone::Parada);
        return;
    }
    if (Int(Val(receita.txtTipoRect)) >= kTipoQueNaoSeEnvia) {
        m_avisos.Avisar("Esta Receita não pode ser Enviada por Email!", Avisos::Icone::Informacao);
        return;
    }

    EsperaLonga espera;
    const QString caminho = m_banco.Caminho("~temp.eml");
    bool gravado = true;
    try {
        ArquivoSeguro::Gravar(caminho, MensagemReceita::Montar(receita, LerFigura(receita), m_site),
                              {.modelo = m_banco.CaminhoDoLivro()});
    } catch (const Disco::ErroArquivo &) {
        gravado = false;
    }
    espera.Encerrar();

    if (!gravado) {
        m_avisos.Avisar("Impossível Gravar a Mensagem no Arquivo " + caminho + "!", Avisos::Icone::Parada);
        return;
    }
    m_abridor.AbrirArquivo(caminho);
}

/// The picture's bytes, no value when there is no picture; a missing or unreadable file gives empty bytes.
std::optional<QByteArray> EnvioEmail::LerFigura(const ReceitaNaTela &receita) const
{
    if (!receita.temFigura || receita.tagFigura == "NADA")
        return std::nullopt;
    const bool guardada = receita.tagFigura.isEmpty() || receita.tagFigura == "OLD";
    const QString caminho =
        guardada ? m_figuras.Caminho(m_figuras.PegarNomeArquivo(Aparar(receita.txtNroReceita).toLongLong()))
                 : receita.tagFigura;
    QFile arquivo(caminho);
    if (caminho.isEmpty() || !arquivo.open(QIODevice::ReadOnly))
        return QByteArray();
    return arquivo.readAll();
}
