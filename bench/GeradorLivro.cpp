#include "bench/GeradorLivro.h"

#include "bench/MotorNu.h"
#include "store/Comandos.h"
#include "store/Esquema.h"

#include <QBuffer>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <stdexcept>
#include <vector>

namespace
{
constexpr std::array kPratos = {"Bolo",     "Torta",    "Sopa",     "Pão",      "Doce",    "Salada",
                                "Pudim",    "Creme",    "Arroz",    "Ensopado", "Assado",  "Caldo",
                                "Biscoito", "Rosca",    "Mousse",   "Risoto",   "Empadão", "Quibe",
                                "Panqueca", "Geleia",   "Farofa",   "Pavê",     "Suflê",   "Moqueca",
                                "Cuscuz",   "Refogado", "Conserva", "Licor",    "Sorvete", "Bolinho"};

constexpr std::array kPrincipais = {
    "fubá",     "milho",     "maçã",      "abóbora",   "coco",     "queijo",    "banana",   "limão",
    "mandioca", "nozes",     "uva",       "frango",    "camarão",  "carne",     "bacalhau", "palmito",
    "cenoura",  "chocolate", "laranja",   "morango",   "batata",   "berinjela", "abacaxi",  "goiaba",
    "feijão",   "lentilha",  "espinafre", "alho-poró", "castanha", "maracujá",  "damasco",  "pêssego",
    "couve",    "ervilha",   "presunto",  "atum",      "cogumelo", "requeijão", "inhame",   "jiló"};

constexpr std::array kFeitios = {
    "da vovó",      "de forno",      "à moda da casa", "do sítio",   "com ervas",         "de domingo",
    "ligeiro",      "cremoso",       "da fazenda",     "sem açúcar", "em camadas",        "de panela",
    "na brasa",     "dos tropeiros", "d'água",         "ao vinho",   "de festa",          "picante",
    "da Tia Zélia", "gelado",        "meia-noite",     "integral",   "de liquidificador", "com calda",
    "de São João",  "à baiana",      "de Natal",       "do interior"};

constexpr std::array kTipos = {"Bolos",   "Tortas",     "Sopas",   "Pães",     "Doces",
                               "Saladas", "Sobremesas", "Carnes",  "Aves",     "Peixes",
                               "Massas",  "Molhos",     "Bebidas", "Lanches",  "Entradas",
                               "Legumes", "Conservas",  "Grãos",   "Sorvetes", "Biscoitos"};

constexpr std::array kUnidades = {"xícara", "xícaras", "colher de sopa", "colheres de sopa", "g",
                                  "kg",     "ml",      "litro",          "pitada",           "dente",
                                  "maço",   "lata",    "unidade",        "colher de chá",    "fatias",
                                  "copo"};
constexpr std::array kQuantidades = {"1",   "2",   "3",   "1/2", "1/4", "1 1/2",
                                     "100", "200", "250", "500", "4",   "6"};

constexpr std::array kBases = {"farinha de trigo",
                               "açúcar",
                               "sal",
                               "manteiga",
                               "leite",
                               "ovos",
                               "fermento",
                               "óleo",
                               "azeite",
                               "alho",
                               "cebola",
                               "tomate",
                               "salsa",
                               "cebolinha",
                               "coentro",
                               "pimenta",
                               "vinagre",
                               "queijo",
                               "creme de leite",
                               "leite condensado",
                               "chocolate",
                               "cacau",
                               "canela",
                               "cravo",
                               "noz-moscada",
                               "fubá",
                               "maisena",
                               "polvilho",
                               "arroz",
                               "feijão",
                               "lentilha",
                               "grão-de-bico",
                               "batata",
                               "mandioca",
                               "inhame",
                               "cenoura",
                               "beterraba",
                               "abóbora",
                               "chuchu",
                               "abobrinha",
                               "berinjela",
                               "pimentão",
                               "quiabo",
                               "couve",
                               "espinafre",
                               "alface",
                               "rúcula",
                               "agrião",
                               "repolho",
                               "brócolis",
                               "couve-flor",
                               "palmito",
                               "milho verde",
                               "ervilha",
                               "azeitona",
                               "cogumelo",
                               "frango",
                               "carne moída",
                               "carne-seca",
                               "lombo",
                               "linguiça",
                               "bacon",
                               "presunto",
                               "peru",
                               "camarão",
                               "bacalhau",
                               "atum",
                               "sardinha",
                               "salmão",
                               "pescada",
                               "lula",
                               "polvo",
                               "banana",
                               "maçã",
                               "pera",
                               "laranja",
                               "limão",
                               "abacaxi",
                               "manga",
                               "maracujá",
                               "morango",
                               "goiaba",
                               "coco",
                               "uva-passa",
                               "ameixa",
                               "damasco",
                               "figo",
                               "castanha",
                               "nozes",
                               "amendoim",
                               "avelã",
                               "gergelim",
                               "linhaça",
                               "aveia",
                               "mel",
                               "melado",
                               "rapadura",
                               "gelatina",
                               "iogurte",
                               "requeijão",
                               "ricota",
                               "nata",
                               "caldo",
                               "vinho",
                               "rum",
                               "licor",
                               "café",
                               "chá",
                               "baunilha",
                               "erva-doce",
                               "hortelã",
                               "alecrim",
                               "orégano",
                               "tomilho",
                               "louro",
                               "manjericão",
                               "gengibre",
                               "mostarda",
                               "páprica",
                               "cominho"};
constexpr std::array kQualidades = {
    "",           " fresco",     " seco",      " ralado",    " em pó",       " picado",       " em cubos",
    " moído",     " inteiro",    " maduro",    " verde",     " torrado",     " cozido",       " cru",
    " defumado",  " light",      " integral",  " orgânico",  " em conserva", " congelado",    " de primeira",
    " caseiro",   " em rodelas", " em fatias", " peneirado", " derretido",   " gelado",       " morno",
    " em flocos", " granulado",  " refinado",  " sem casca", " sem pele",    " sem sementes", " graúdo",
    " miúdo",     " batido",     " escorrido", " temperado", " doce"};
constexpr std::array kOrigens = {"",
                                 " da serra",
                                 " do sertão",
                                 " da horta",
                                 " mineiro",
                                 " baiano",
                                 " gaúcho",
                                 " paulista",
                                 " goiano",
                                 " do norte",
                                 " da colônia",
                                 " da feira",
                                 " do vale",
                                 " da ilha",
                                 " do sítio",
                                 " importado",
                                 " da estação",
                                 " do pantanal",
                                 " capixaba",
                                 " paranaense",
                                 " de Minas",
                                 " da Canastra",
                                 " do cerrado",
                                 " do agreste",
                                 " da montanha",
                                 " do litoral",
                                 " da roça",
                                 " da chácara",
                                 " do mercado",
                                 " de inverno",
                                 " de verão",
                                 " da safra",
                                 " extra",
                                 " especial",
                                 " da vila",
                                 " do campo",
                                 " da várzea",
                                 " do brejo",
                                 " da capital",
                                 " da fronteira"};

constexpr std::array kPassos = {
    "Bata os ovos com o açúcar até formar um creme claro.",
    "Junte aos poucos a farinha peneirada, mexendo sempre com uma colher de pau.",
    "Refogue a cebola e o alho no azeite até ficarem dourados.",
    "Leve ao forno já quente e asse até que, espetando um palito, ele saia seco.",
    "Deixe descansar coberto com um pano limpo até dobrar de tamanho.",
    "Tempere com sal e pimenta a gosto e deixe tomar gosto de um dia para o outro.",
    "Cozinhe em fogo baixo, sem deixar ferver, até engrossar.",
    "Arrume em camadas num refratário untado com manteiga.",
    "Misture os ingredientes secos e faça uma cova no meio.",
    "Sirva bem quente, com salsa picada por cima.",
    "Leve à geladeira por pelo menos quatro horas antes de desenformar.",
    "Escorra, reserve a água do cozimento e amasse ainda quente.",
    "Polvilhe com canela e açúcar e espere esfriar para cortar.",
    "Acrescente o caldo fervente, uma concha de cada vez, até secar.",
    "Unte as mãos com óleo e enrole bolinhas do tamanho de uma noz."};
constexpr std::array kCadernos = {"Caderno da avó", "Revista da igreja", "Vizinha do lado",
                                  "Programa de rádio", "Feira de domingo"};

constexpr int kDistintosPorMil = 3000; ///< distinct ingredients of 1 000 recipes
constexpr double kCrescimento = 0.75;  ///< exponent; 250 000 recipes then have 189 000
constexpr int kPopulares = 300;        ///< what every kitchen has
constexpr std::size_t kLetrasDoModo = 850;
constexpr int kFigurasDiferentes = 16;

/// Whole numbers below a limit from the engine's raw output: the standard distributions differ between
/// libraries, and a book must not.
class Acaso
{
public:
    explicit Acaso(std::uint32_t semente)
        : m_gerador(semente)
    {
    }
    std::size_t Abaixo(std::size_t limite)
    {
        return (static_cast<std::uint64_t>(m_gerador()) * limite) >> 32;
    }
    bool EmCem(std::size_t vezes) { return Abaixo(100) < vezes; }
    template <class Lista>
    const char *De(const Lista &lista)
    {
        return lista[Abaixo(lista.size())];
    }

private:
    std::mt19937 m_gerador;
};

std::string Ingrediente(std::size_t numero)
{
    const std::size_t bases = kBases.size();
    const std::size_t qualidades = kQualidades.size();
    return std::string(kBases[numero % bases]) + kQualidades[numero / bases % qualidades] +
           kOrigens[numero / (bases * qualidades) % kOrigens.size()];
}

std::string Modo(Acaso &acaso)
{
    std::string modo;
    while (modo.size() < kLetrasDoModo) {
        modo += acaso.De(kPassos);
        modo += acaso.EmCem(30) ? "\r\n" : " ";
    }
    return modo;
}

/// A few small pictures; recipes share their bytes, each has its own file.
std::vector<QByteArray> Figuras(Acaso &acaso)
{
    std::vector<QByteArray> figuras;
    for (int i = 0; i < kFigurasDiferentes; ++i) {
        QImage imagem(96, 72, QImage::Format_RGB32);
        const int tom = static_cast<int>(acaso.Abaixo(256));
        for (int y = 0; y < imagem.height(); ++y)
            for (int x = 0; x < imagem.width(); ++x)
                imagem.setPixel(x, y, qRgb((x * 2 + tom) % 256, y * 3, (x + y + i * 16) % 256));
        QByteArray bytes;
        QBuffer saida(&bytes);
        saida.open(QIODevice::WriteOnly);
        if (!imagem.save(&saida, "PNG"))
            throw std::runtime_error("a picture cannot be encoded");
        figuras.push_back(bytes);
    }
    return figuras;
}

void GravarFigura(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(bytes) != bytes.size())
        throw std::runtime_error(qPrintable(caminho + ": " + arquivo.errorString()));
}
} // namespace

void GerarLivro(const QString &pasta, int receitas, std::uint32_t semente)
{
    const QString caminho = pasta + "/dadosr.lst";
    if (QFile::exists(caminho))
        throw std::runtime_error(qPrintable(caminho + ": there is a book already"));
    if (!QDir(pasta).mkpath("Fotos"))
        throw std::runtime_error(qPrintable(pasta + ": the folder of pictures cannot be made"));

    Acaso acaso(semente);
    const auto figuras = Figuras(acaso);
    const auto distintos = std::max<std::size_t>(
        kPopulares,
        std::min(kBases.size() * kQualidades.size() * kOrigens.size(),
                 static_cast<std::size_t>(kDistintosPorMil * std::pow(receitas / 1000.0, kCrescimento))));

    MotorNu motor(caminho, MotorNu::Modo::Criar);
    motor.Executar("PRAGMA synchronous=OFF");
    motor.Executar("PRAGMA cache_size=-65536");
    motor.Executar("BEGIN");
    motor.Executar(Esquema::Tabelas().toStdString());
    ComandoNu receita(
        motor, "INSERT INTO Receitas(Nome,Data,Classificacao,Origem,Porcoes,Preparo,Tipo_Calorias,Calorias,"
               "Figura,Modo,Observacao) VALUES(?,?,?,?,?,?,?,?,?,?,?)");
    ComandoNu linha(motor,
                    "INSERT INTO Ingredientes(id_receitas,Ingrediente,Quantidade,Unidade) VALUES(?,?,?,?)");
    const QDate primeiroDia(1999, 1, 1);
    for (int numero = 1; numero <= receitas; ++numero) {
        const std::string nome = std::string(acaso.De(kPratos)) + " de " + acaso.De(kPrincipais) + " " +
                                 acaso.De(kFeitios) + " nº " + std::to_string(numero);
        const bool comFigura = acaso.EmCem(5);
        const QString figura = Comandos::NomeFigura(numero);
        receita.Ligar(1, nome);
        receita.Ligar(
            2,
            primeiroDia.addDays(static_cast<qint64>(acaso.Abaixo(2500))).toString(Qt::ISODate).toStdString());
        receita.Ligar(3, acaso.De(kTipos));
        if (acaso.EmCem(30))
            receita.Ligar(4, acaso.De(kCadernos));
        receita.Ligar(5, static_cast<qint64>(1 + acaso.Abaixo(12)));
        receita.Ligar(6, std::to_string(10 + 5 * acaso.Abaixo(20)) + " minutos");
        receita.Ligar(7, acaso.EmCem(50) ? "R" : "P");
        receita.Ligar(8, static_cast<qint64>(50 + acaso.Abaixo(900)));
        if (comFigura)
            receita.Ligar(9, figura.toStdString());
        receita.Ligar(10, Modo(acaso));
        if (acaso.EmCem(40))
            receita.Ligar(11, acaso.De(kPassos));
        receita.Rodar();
        if (comFigura)
            GravarFigura(pasta + "/Fotos/" + figura, figuras[acaso.Abaixo(figuras.size())]);

        for (std::size_t linhas = 8 + acaso.Abaixo(5); linhas > 0; --linhas) {
            linha.Ligar(1, static_cast<qint64>(numero));
            linha.Ligar(2, Ingrediente(acaso.Abaixo(acaso.EmCem(30) ? kPopulares : distintos)));
            linha.Ligar(3, acaso.De(kQuantidades));
            if (acaso.EmCem(85))
                linha.Ligar(4, acaso.De(kUnidades));
            linha.Rodar();
        }
    }
    motor.Executar(Esquema::Restante().toStdString());
    motor.Executar("COMMIT");
}
