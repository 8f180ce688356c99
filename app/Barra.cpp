#include "app/Barra.h"

#include "app/Desenho.h"
#include "base/BotaoImagem.h"

#include <QFrame>
#include <QLabel>

namespace
{
struct Definicao {
    const char *nome;
    const char *dica;
    const char *efeito; ///< for those who listen
    const char *atalho; ///< a mistaken key must neither end nor hide the program: the last two have none
    int esquerda;       ///< pixels
    int topo;
    int lado; ///< of the image
};

constexpr int kLado = 38;
constexpr int kLadoPequeno = 24;
constexpr int kTopo = 7;

// One tip counts on the news being the seventh.
constexpr Definicao kBotoes[] = {
    {"imgDetRcta", "Nova Receita", "Abre uma ficha em branco", "Ctrl+N", 10, kTopo, kLado},
    {"imgLstRcta", "Lista de Receitas", "Mostra todas as receitas", "Ctrl+L", 66, kTopo, kLado},
    {"imgPesRcta", "Pesquisa de Receitas", "Abre a pesquisa, abaixo da lista", "Ctrl+F", 122, kTopo, kLado},
    {"imgImpressao", "Imprimir Receitas", "Imprime a receita aberta ou as marcadas na lista", "Ctrl+P", 178,
     kTopo, kLado},
    {"imgEmail", "Enviar a Receita por Email", "Abre o programa de email com a receita que está aberta",
     "Ctrl+M", 234, kTopo, kLado},
    {"imgTransmit", "Enviar Pacote de Receitas por Email",
     "Abre o programa de email com as receitas marcadas na lista", "Ctrl+T", 290, kTopo, kLado},
    {"imgInternet", "Novidades na Internet", "Mostra a página do fabricante", "Ctrl+I", 346, kTopo, kLado},
    {"imgBackup", "Fazer Cópia de Segurança", "Guarda o livro inteiro num arquivo", "Ctrl+B", 402, kTopo,
     kLado},
    {"imgRestore", "Restaurar Cópia de Segurança", "Traz o livro de volta de um arquivo", "Ctrl+R", 458,
     kTopo, kLado},
    {"imgMinimize", "Minimizar", "Guarda a janela na barra do sistema", "", 546, kTopo, kLadoPequeno},
    {"imgSaida", "Sair", "Encerra o programa, sem perguntar", "", 582, kTopo, kLadoPequeno},
};
} // namespace

Barra::Barra(int altura, QWidget *janela)
    : Faixa("picToolBar", Tipo::Barra, altura, janela)
{
    auto *fraPicBotoes = new QFrame(this);
    fraPicBotoes->setObjectName("fraPicBotoes");
    fraPicBotoes->setAccessibleName("Frames do Espelhos dos Botões");
    fraPicBotoes->hide();
    const auto espelho = [&](const QString &nome, const QString &sufixo, int lado) {
        auto *imagem = new QLabel(fraPicBotoes);
        imagem->setObjectName(nome + sufixo);
        imagem->setFixedSize(lado, lado);
        return imagem;
    };
    for (const Definicao &definicao : kBotoes) {
        const QString nome = definicao.nome;
        QLabel *normal = espelho(nome, "Norm", definicao.lado);
        PorFigura(normal);
        QLabel *aceso = espelho(nome, "Over", definicao.lado);
        m_acesosPorDesenhar += aceso;
        auto *botao = new BotaoImagem(nome, definicao.dica, normal, aceso, this);
        botao->setAccessibleDescription(definicao.efeito);
        botao->move(definicao.esquerda, definicao.topo);
        if (const QKeySequence atalho(definicao.atalho); !atalho.isEmpty()) {
            botao->setShortcut(atalho);
            botao->setToolTip(
                QString("%1 (%2)").arg(definicao.dica, atalho.toString(QKeySequence::NativeText)));
        }
        connect(botao, &BotaoImagem::apontado, this, [this, botao] { Atualizar(botao); });
        // Whatever lies beside a button, the mouse that is no longer on it leaves it in its normal look.
        connect(botao, &BotaoImagem::deixado, this, [this] { Atualizar(nullptr); });
        m_botoes.insert(nome, botao);
    }
}

void Barra::PorFigura(QLabel *imagem) const
{
    imagem->setPixmap(
        Desenho(":/botoes/" + imagem->objectName() + ".svg", imagem->size(), devicePixelRatioF()));
}

void Barra::DesenharAcesos()
{
    for (QLabel *imagem : std::exchange(m_acesosPorDesenhar, {}))
        PorFigura(imagem);
}

void Barra::Atualizar(const BotaoImagem *aceso)
{
    if (aceso)
        DesenharAcesos();
    for (BotaoImagem *botao : std::as_const(m_botoes))
        botao->Acender(botao == aceso);
}
