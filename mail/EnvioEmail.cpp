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

/// An earlier message is replaced only by a complete one, and who may not read the book may not read this.
bool Gravar(const QString &caminho, const QByteArray &mensagem, const QString &livro)
{
    try {
        ArquivoSeguro::Gravar(caminho, mensagem, {.modelo = livro});
        return true;
    } catch (const Disco::ErroArquivo &) {
        return false;
    }
}
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
    const bool gravado = Gravar(caminho, MensagemReceita::Montar(receita, LerFigura(receita), m_site),
                                m_banco.CaminhoDoLivro());
    espera.Encerrar();

    if (!gravado) {
        m_avisos.Avisar("Impossível Gravar a Mensagem no Arquivo " + caminho + "!", Avisos::Icone::Parada);
        return;
    }
    m_abridor.AbrirMensagem(caminho, [&avisos = m_avisos, caminho] {
        avisos.Avisar("Nenhum programa de email abriu a mensagem.\r\n\r\nEla está pronta, no arquivo:\r\n" + caminho,
                      Avisos::Icone::Informacao);
    });
}

/// The picture's bytes, no value when there is no picture; a missing or unreadable file gives empty bytes.
std::optional<QByteArray> EnvioEmail::LerFigura(const ReceitaNaTela &receita) const
{
    if (!receita.figuraMostrada || receita.imgFigura.ENenhuma())
        return std::nullopt;
    const bool guardada = receita.imgFigura.EGuardada();
    const QString caminho =
        guardada ? m_figuras.Caminho(m_figuras.PegarNomeArquivo(Aparar(receita.txtNroReceita).toLongLong()))
                 : receita.imgFigura.Tag();
    QFile arquivo(caminho);
    if (caminho.isEmpty() || !arquivo.open(QIODevice::ReadOnly))
        return QByteArray();
    return arquivo.readAll();
}
