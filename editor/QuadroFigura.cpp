#include "editor/QuadroFigura.h"

#include "base/Avisos.h"
#include "base/Protegido.h"
#include "base/SeletorArquivos.h"
#include "editor/ImagemFigura.h"
#include "editor/Rotulo.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QFile>
#include <QHBoxLayout>
#include <QPushButton>

namespace
{
// A camera's largest; what lies beyond is not worth its place in memory.
constexpr qint64 kMaisBytes = 64LL * 1024 * 1024;

QByteArray LerBytes(const QString &caminho)
{
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly) || arquivo.size() > kMaisBytes)
        return {};
    return arquivo.readAll();
}
} // namespace

QuadroFigura::QuadroFigura(const Banco &banco, Avisos &avisos, SeletorArquivos &seletor, QWidget *parent)
    // The same caption as the ingredients' frame, on purpose: the two stand in one place.
    : QGroupBox(" Ingredientes : ", parent)
    , m_banco(banco)
    , m_avisos(avisos)
    , m_seletor(seletor)
    , m_imgFigura(new ImagemFigura)
    , m_imgNada(new QLabel(this))
    , m_cmdSalvarFig(new QPushButton("Alterar &Imagem"))
    , m_cmdLimparFig(new QPushButton("&Limpar Imagem"))
{
    setObjectName("fraFigura");
    m_imgNada->setObjectName("imgNada");
    m_imgNada->setPixmap(QPixmap(":/sem_figura.jpg"));
    m_imgNada->hide();
    m_cmdSalvarFig->setObjectName("cmdSalvarFig");
    m_cmdSalvarFig->setAccessibleName("Alterar Imagem");
    m_cmdLimparFig->setObjectName("cmdLimparFig");
    m_cmdLimparFig->setAccessibleName("Limpar Imagem");
    m_cmdSalvarFig->setFixedHeight(kAlturaBotao);
    m_cmdLimparFig->setFixedHeight(kAlturaBotao);

    auto *botoes = new QHBoxLayout;
    botoes->setSpacing(kEspaco);
    botoes->addStretch();
    botoes->addWidget(m_cmdLimparFig);
    botoes->addWidget(m_cmdSalvarFig);
    auto *coluna = new QVBoxLayout(this);
    coluna->setContentsMargins(kMargemQuadro);
    coluna->setSpacing(kEspaco);
    coluna->addWidget(m_imgFigura, 1);
    coluna->addLayout(botoes);

    connect(m_cmdSalvarFig, &QPushButton::clicked, this, Protegido(m_avisos, [this] { Escolher(); }));
    connect(m_cmdLimparFig, &QPushButton::clicked, this, Protegido(m_avisos, [this] {
                Limpar();
                m_cmdSalvarFig->setFocus(); // the button that had it is gone
            }));
    Limpar();
}

void QuadroFigura::Mostrar(const QImage &imagem, const EstadoDaFigura &estado)
{
    m_imgFigura->Mostrar(imagem);
    m_imgFigura->DefinirTag(estado.Tag());
    m_imgFigura->setToolTip(QString());
    m_bytesAntigos.clear();
    m_cmdLimparFig->setVisible(!estado.ENenhuma());
}

void QuadroFigura::Limpar()
{
    Mostrar(m_imgNada->pixmap(Qt::ReturnByValue).toImage(), EstadoDaFigura::Nenhuma());
}

bool QuadroFigura::MostrarAntiga(const QString &caminho)
{
    Limpar();
    const ImagemLida lida = caminho.isEmpty() ? ImagemLida() : LerFigura(caminho);
    if (lida.estado == ImagemLida::Estado::NaoEImagem)
        return false;
    const bool boa = lida.estado == ImagemLida::Estado::Boa;
    Mostrar(boa ? lida.imagem : m_imgNada->pixmap(Qt::ReturnByValue).toImage(), EstadoDaFigura::Guardada());
    if (!boa)
        m_imgFigura->setToolTip("A imagem é grande demais para ser mostrada. Ela continua guardada.");
    m_bytesAntigos = LerBytes(caminho);
    return boa;
}

void QuadroFigura::Escolher()
{
    PedidoArquivo pedido;
    pedido.titulo = "Selecione a Imagem ";
    pedido.filtro = "Arquivos de Imagens|*.bmp;*.jpg;*.gif;*.img";
    pedido.pastaInicial = m_pastaInicial.isEmpty() ? m_banco.Caminho(QString()) : m_pastaInicial;
    const QString caminho = m_seletor.EscolherParaAbrir(pedido);
    if (caminho.isEmpty())
        return;
    const QImage imagem = CarregarImagem(caminho);
    if (imagem.isNull()) {
        m_avisos.Avisar("Imagem de Formato Inválido", Avisos::Icone::Parada);
        return;
    }
    Mostrar(imagem, caminho);
    m_pastaInicial = caminho.left(caminho.lastIndexOf('/') + 1);
}

EstadoDaFigura QuadroFigura::Tag() const
{
    return m_imgFigura->Tag();
}

QByteArray QuadroFigura::BytesAntigos() const
{
    return m_bytesAntigos;
}

void QuadroFigura::DarPorGravada(qint64 lngReceita)
{
    if (Tag().ENenhuma())
        return;
    m_imgFigura->DefinirTag(EstadoDaFigura::Guardada().Tag());
    m_bytesAntigos = LerBytes(Figuras(m_banco).Caminho(Comandos::NomeFigura(lngReceita)));
}

bool QuadroFigura::FiguraMostrada() const
{
    return !Tag().ENenhuma();
}
