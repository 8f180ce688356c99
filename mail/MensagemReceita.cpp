#include "mail/MensagemReceita.h"

#include "base/PaginaCodigo.h"
#include "base/Texto.h"
#include "packages/Base64Class.h"

#include <QUrl>

namespace
{
// Constants of the form, the same in every message.
const QString kLimiteExterno = "----=_NextPart_000_0013_01C4900A.6AABC050";
const QString kLimiteInterno = "----=_NextPart_001_0014_01C4900A.6AABC050";
const QString kIdFigura = "000e01c49023$8e488930$0100000a@tamarel";

QString EntreAspas(const QString &texto)
{
    return '"' + texto + '"';
}

/// A value of one line. Anything else in it would begin a line of the message: a header, even.
QString Simples(const QString &texto)
{
    return Aparar(SemControles(texto));
}

QString ComBr(const QString &texto)
{
    // A lone CR or LF is no line break of ours, but mail programs may take it for one.
    return Aparar(texto).replace("\r\n", "<BR>").replace('\r', ' ').replace('\n', ' ');
}

QStringList Cabecalho(const QString &nome)
{
    return {
        "Reply-To:",
        "From:",
        "Subject: Receita de " + nome,
        "Date: ", // left empty: the mail program fills it in when the user sends
        "MIME-Version: 1.0",
        "Content-Type: multipart/related;",
        "        type=" + EntreAspas("multipart/alternative") + ";",
        "        boundary=" + EntreAspas(kLimiteExterno),
        "X-Priority: 3",
        "X-MSMail-Priority: Normal",
        "X-Unsent: 1", // opens as a message being written
        "X-MimeOLE: Produced By Microsoft MimeOLE V5.50.4927.1200",
        "",
        "This is a multi-part message in MIME format.",
        "",
        "--" + kLimiteExterno,
        "Content-Type: multipart/alternative;",
        "        boundary=" + EntreAspas(kLimiteInterno),
        "",
        "--" + kLimiteInterno,
        "Content-Type: text/html;",
        "        charset=" + EntreAspas("iso-8859-1"),
        "Content-Transfer-Encoding: quoted-printable",
        "",
    };
}

QString Fatos(const ReceitaNaTela &receita)
{
    QString fatos;
    const auto acrescentar = [&fatos](const QString &rotulo, const QString &valor, const QString &depois) {
        if (!valor.isEmpty())
            fatos += "<B>" + rotulo + ": </B>" + valor + depois + "<BR>";
    };
    acrescentar("Tipo", Simples(receita.cmbTipo), "");
    acrescentar("Tempo de Preparo", Simples(receita.txtPreparo), "");
    acrescentar("Rendimento", Simples(receita.txtPorcoes), " porções");
    acrescentar("Calorias", Simples(receita.txtCalorias),
                receita.optPorcao    ? " por porção."
                : receita.optReceita ? " por receita."
                                     : "");
    return fatos;
}

QString LinhaDeIngrediente(const QString &tag)
{
    // Saving and the editor join and split the tag at character 160 as well: change them together.
    const QStringList partes = tag.split(QChar(160));
    const QString quantidade = Simples(partes.value(0));
    const QString unidade = Simples(partes.value(1));
    const QString ingrediente = Simples(partes.value(2));
    // The blank after the quantity stands even when there is no quantity.
    return quantidade + ' ' + (unidade.isEmpty() ? QString() : unidade + ' ') + ingrediente + "<BR>";
}

QString Corpo(const ReceitaNaTela &receita)
{
    QString corpo = "</TD></TR><TR><TD colSpan=3D2 vAlign=3Dtop><FONT face=3DVerdana size=3D2>"
                    "<B>Ingredientes : </B><BR>";
    for (const QString &tag : receita.ingredientes)
        corpo += LinhaDeIngrediente(tag);
    // Kept on purpose: a </DIV> that nothing opens, and "=size" further down.
    corpo += "</FONT></DIV></TD></TR><TR><TD colSpan=3D2><p align=3Djustify><FONT face=3DVerdana size=3D2>"
             "<B>Modo de Preparo :=20</B><BR>" +
             ComBr(receita.txtModo) +
             "</FONT></TD></TR><TR><TD colSpan=3D2><FONT face=3DVerdana =size=3D2>&nbsp;</FONT></TD></TR>";
    const QString observacao = ComBr(receita.txtObs);
    if (!observacao.isEmpty())
        corpo += "<TR><TD colSpan=3D2><p align=3Djustify><FONT face=3DVerdana size=3D2>"
                 "<B>Informa=E7=F5es Adicionais :=20</B><BR>" +
                 observacao + "</FONT></TD></TR>";
    return corpo + "</TBODY></TABLE>";
}

QStringList Html(const ReceitaNaTela &receita, bool comFigura, const QString &site)
{
    QStringList linhas = {
        "<!DOCTYPE HTML PUBLIC " + EntreAspas("-//W3C//DTD HTML 4.0 Transitional//EN") + ">",
        "<HTML><HEAD>",
        "<META content=3D" + EntreAspas("text/html; charset=3Diso-8859-1") + " = ",
        "http-equiv=3DContent-Type>",
        "<META content=3D" + EntreAspas("MSHTML 5.00.3819.300") + " name=3DGENERATOR>",
        "<STYLE></STYLE>",
        "</HEAD>",
        "<BODY bgColor=3D#ffffff><FONT color=3Dblue face=3DVerdana =",
        "size=3D5><B>" + Simples(receita.txtNome) + "<FONT size=3D2><BR>(" + Simples(receita.txtOrigem) +
            ")</FONT></FONT>=20",
        "<HR color=3D#000000 width=3D" + EntreAspas("100%") + ">",
        "<TABLE border=3D0 width=3D" + EntreAspas("100%") + ">",
        "<TBODY><TR><TD vAlign=3Dtop width=3D" + EntreAspas("90%") + ">",
    };
    const QString fatos = "<FONT face=3DVerdana size=3D2>" + Fatos(receita) +
                          "</FONT></TD><TD rowSpan=3D2 vAlign=3Dtop width=3D" + EntreAspas("10%") + ">";
    if (comFigura) {
        linhas << fatos + "<IMG align=3Dbaseline ="
               << "border=3D0=20"
               << "      hspace=3D0 src=3D" + EntreAspas("cid:" + kIdFigura) + "=20"
               << "  width=3D200 height=3D171>" + Corpo(receita);
    } else {
        linhas << fatos + Corpo(receita);
    }
    linhas << "<HR color=3D#000000 width=3D" + EntreAspas("100%") +
                  "><FONT color=3Dblue face=3DVerdana size=3D1>AVISO: Esta receita foi elaborada com o "
                  "auxílio do "
                  "programa Cozinhario. Instale este programa de graça no seu computador, <a href=3D" +
                  EntreAspas(site + "/cozinhario/download/instalar.exe") +
                  ">clique aqui</a>!<BR>Receita enviada atrav=E9s do ="
           << "Cozinhario 2005 - Por Tamarel Inform=E1tica - <A=20"
           << "href=3D" + EntreAspas(site) + ">" + QUrl(site).host() + "</A> ="
           << "</FONT></B></BODY></HTML>"
           << ""
           << "--" + kLimiteInterno + "--"
           << "";
    return linhas;
}

QStringList CabecalhoDaFigura()
{
    return {
        "--" + kLimiteExterno,
        "Content-Type: image/jpeg;",
        "        name=" + EntreAspas("figura.jpg"),
        "Content-Transfer-Encoding: base64",
        "Content-ID: <" + kIdFigura + ">",
        "",
    };
}

QByteArray Linhas(const QStringList &linhas)
{
    QByteArray bytes;
    for (const QString &linha : linhas)
        bytes += PaginaCodigo::ParaAnsi(linha) + "\r\n";
    return bytes;
}
} // namespace

QByteArray MensagemReceita::Montar(const ReceitaNaTela &receita, const std::optional<QByteArray> &figura,
                                   const QString &site)
{
    QByteArray mensagem = Linhas(Cabecalho(Simples(receita.txtNome)));
    mensagem += Linhas(Html(receita, figura.has_value(), site));
    if (figura) {
        mensagem += Linhas(CabecalhoDaFigura());
        if (!figura->isEmpty())
            mensagem += Base64Class().Codificar(*figura);
        mensagem += "\r\n\r\n";
    }
    return mensagem + Linhas({"--" + kLimiteExterno + "--", ""});
}
