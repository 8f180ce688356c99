#include "app/Dicas.h"

#include "base/Sorteio.h"
#include "base/Twips.h"

#include <QLabel>

QStringList Dicas(const QString &site)
{
    return {
        "Acesse regularmente a internet (7º ícone), para efetuar download de pacotes de receitas.",
        "Não se esqueça de enviar um email para o desenvolvedor expressando sua opinião sobre o programa.",
        "Você só pode enviar uma única receita por email por vez, mas para quantos destinatários desejar.",
        "Crie seus pacotes de receitas e envie para seus amigos, familiares ou para nós.",
        "Envie para nós suas receitas, elas poderão ser publicadas em pacotes especiais.",
        "Efetue backup regularmente, evitando assim a perda das informações cadastradas.",
        "Evite imprimir suas receitas, somente se necessário, pois assim estará economizando papel e "
        "árvores.",
        "Procure realizar suas pesquisas com maior número de dados, pois facilita a localização da receita.",
        "Visite nosso site e confira outros programas e serviços. " + site + ".",
        "Compartilhe com seus amigos, familiares e conhecidos esse programa e troque receitas por email.",
        "Ao cadastrar uma nova receita, procure informar todos os dados, a organização fica melhor.",
        "Nas imagens das receitas, procure utilizar imagens pequenas evitando assim carregar o seu programa.",
        "Quando cadastrar ingredientes na receita, verifique se já não se encontram na caixas de informação.",
    };
}

int IndiceDaDica(double sorteio)
{
    return static_cast<int>(sorteio * 12);
}

namespace
{
void Colocar(QWidget *controle, int top, int left, int width, int height)
{
    controle->setGeometry(TwipsParaPixels(left), TwipsParaPixels(top), TwipsParaPixels(width),
                          TwipsParaPixels(height));
}

// Centres a logo of its own size over the middle of the tip.
constexpr int kLogoLargura = 585;
constexpr int kLogoAltura = 450;
} // namespace

void MostrarDica(quint8 bytTipo, const AreaDaDica &area, Sorteio &sorteio, const QString &siteDoFabricante,
                 const QString &siteDoDistribuidor)
{
    const bool fabricante = bytTipo == 0;
    const QStringList dicas = Dicas(fabricante ? siteDoFabricante : siteDoDistribuidor);
    if (fabricante) {
        Colocar(area.lblDica, 7245, 4725, 2385, 420);
        Colocar(area.picTamarel, 6795, 5625, kLogoLargura, kLogoAltura);
    } else {
        Colocar(area.lblDica, 7335, 5010, 5400, 195);
        Colocar(area.picVilanuLogo, 7155, 4300, kLogoLargura, kLogoAltura);
    }
    area.lblDica->setAlignment(Qt::AlignCenter);
    area.picTamarel->setVisible(fabricante);
    area.lblUrl->setVisible(fabricante);
    area.picVilanuLogo->setVisible(!fabricante);

    const QString dica = dicas.at(IndiceDaDica(sorteio.Sortear()));
    area.lblDica->setText(dica);
    area.lblDica->setToolTip(dica); // the label is small: the tip can be read at full size, too
}
