// Fills a book with the recipes of a folder, through the same code that saves a recipe from the editor.
//   encher_livro FOLDER_OF_THE_BOOK FOLDER_OF_THE_EXAMPLES
#include "base/Relogio.h"
#include "editor/GravarReceita.h"
#include "editor/LinhaIngrediente.h"
#include "exemplos/LeitorExemplos.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QGuiApplication>

#include <cstdio>

namespace
{
ReceitaNaTela ComoNaTela(const ReceitaExemplo &exemplo, const QString &figuras)
{
    ReceitaNaTela tela;
    tela.txtNome = exemplo.nome;
    tela.cmbTipo = exemplo.tipo;
    tela.txtModo = exemplo.modo;
    tela.txtObs = exemplo.observacao;
    tela.txtPorcoes = exemplo.porcoes ? QString::number(exemplo.porcoes) : QString();
    tela.txtPreparo = exemplo.preparo;
    tela.txtCalorias = exemplo.calorias ? QString::number(exemplo.calorias) : QString();
    tela.optReceita = exemplo.tipoCalorias == 'R';
    tela.optPorcao = exemplo.tipoCalorias == 'P';
    tela.imgFigura = exemplo.figura.isEmpty() ? EstadoDaFigura::Nenhuma() : figuras + '/' + exemplo.figura;
    for (const IngredienteExemplo &linha : exemplo.ingredientes)
        tela.ingredientes += LinhaIngrediente::De(linha.quantidade, linha.unidade, linha.ingrediente).Tag();
    return tela;
}
} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication aplicacao(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "encher_livro PASTA_DO_LIVRO PASTA_DOS_EXEMPLOS\n");
        return 2;
    }
    try {
        const Banco banco(QString::fromLocal8Bit(argv[1]));
        const Figuras figuras(banco);
        const RelogioDoSistema relogio;
        const QString exemplos = QString::fromLocal8Bit(argv[2]);
        const QList<ReceitaExemplo> receitas = LeitorExemplos::LerPasta(exemplos + "/receitas");
        for (const ReceitaExemplo &receita : receitas) {
            ReceitaNaTela tela = ComoNaTela(receita, exemplos + "/figuras");
            const qint64 numero = GravarReceita(banco, figuras, relogio, tela);
            // A recipe gets its origin with the package it came in; the editor has no field for it.
            banco.ExecutarSQL(QString("Update Receitas Set Origem = %1 Where id_receitas = %2")
                                  .arg(Comandos::Texto(receita.origem))
                                  .arg(numero));
        }
        std::printf("%d receitas\n", int(receitas.size()));
    } catch (const std::exception &erro) {
        std::fprintf(stderr, "encher_livro: %s\n", erro.what());
        return 1;
    }
    return 0;
}
