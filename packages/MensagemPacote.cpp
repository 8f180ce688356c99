#include "packages/MensagemPacote.h"

#include "base/PaginaCodigo.h"
#include "packages/Base64Class.h"

#include <QStringList>
#include <QUrl>

namespace
{
constexpr auto kPrograma = "Cozinhario 2005";
constexpr auto kFronteira = "----=_NextPart_000_0009_01C4903F.EF2FE790";
constexpr auto kFronteiraInterna = "----=_NextPart_001_000A_01C4903F.EF2FE790";
constexpr auto kAnexo = "=?iso-8859-1?Q?PacoteReceita.lr$?=";
constexpr auto kInstalador = "/cozinhario/download/instalar.exe";

QString EntreAspas(const QString &texto)
{
    return '"' + texto + '"';
}

QStringList Cabecalhos()
{
    return {
        "Reply-To:",
        "From:",
        "Subject: Pacote de Receitas",
        "Date: ",
        "MIME-Version: 1.0",
        "Content-Type: multipart/mixed;",
        "        boundary=" + EntreAspas(kFronteira),
        "X-Priority: 3",
        "X-MSMail-Priority: Normal",
        "X-Unsent: 1",
        "X-MimeOLE: Produced By Microsoft MimeOLE V5.50.4927.1200",
        "",
        "This is a multi-part message in MIME format.",
        "",
    };
}

QStringList ParteHtml(const QString &nomes, const QString &site)
{
    return {
        QString("--") + kFronteira,
        "Content-Type: multipart/alternative;",
        "        boundary=" + EntreAspas(kFronteiraInterna),
        "",
        QString("--") + kFronteiraInterna,
        "Content-Type: text/html;",
        "        charset=" + EntreAspas("iso-8859-1"),
        "Content-Transfer-Encoding: quoted-printable",
        "",
        "<!DOCTYPE HTML PUBLIC " + EntreAspas("-//W3C//DTD HTML 4.0 Transitional//EN") + ">",
        "<HTML><HEAD>",
        "<META content=3D" + EntreAspas("text/html; charset=3Diso-8859-1") + " = ",
        "http-equiv=3DContent-Type>",
        "<META content=3D" + EntreAspas("MSHTML 5.00.3819.300") + " name=3DGENERATOR>",
        "<STYLE></STYLE>",
        "</HEAD>",
        "<BODY bgColor=3D#ffffff><FONT color=3Dblue face=3DVerdana =",
        QString("size=3D2>Para efetuar a importação automática de pacote do ") + kPrograma +
            ", abra o arquivo anexo.<BR><HR color=3D#000000 width=3D" + EntreAspas("100%") +
            "><Font Color=3dblack><B>Receita(s) neste Pacote : </B><BR>" + nomes + "</TBODY></TABLE>",
        "<HR color=3D#000000 width=3D" + EntreAspas("100%") +
            "><FONT color=3Dblue face=3DVerdana size=3D1><B>ATENÇÃO: Caso você não consiga abrir o arquivo "
            "em "
            "anexo é porque você ainda não possui o programa Cozinhario instalado.Para instalá-lo "
            "gratuitamente, <a href=3D" +
            EntreAspas(site + kInstalador) + ">clique aqui</a>!<BR>Pacote enviado atrav=E9s do =",
        QString(kPrograma) + " - Por Tamarel Inform=E1tica - <A=20",
        "href=3D" + EntreAspas(site) + ">" + QUrl(site).host() + "</A> =",
        "</FONT></B></BODY></HTML>",
        "",
        QString("--") + kFronteiraInterna + "--",
        "",
    };
}

QStringList CabecalhosDoAnexo()
{
    return {
        QString("--") + kFronteira,
        "Content-Type: application/octet-stream;",
        "        name=" + EntreAspas(kAnexo),
        "Content-Transfer-Encoding: base64",
        "Content-Disposition: attachment;",
        "        filename=" + EntreAspas(kAnexo),
        "",
    };
}

QByteArray Linhas(const QStringList &linhas)
{
    return PaginaCodigo::ParaAnsi(linhas.join("\r\n") + "\r\n");
}
} // namespace

QByteArray MensagemPacote(const QString &nomes, const QByteArray &pacote, const QString &site)
{
    return InicioDaMensagemPacote(nomes, site) +
           (pacote.isEmpty() ? QByteArray() : Base64Class().Codificar(pacote)) + FimDaMensagemPacote();
}

QByteArray InicioDaMensagemPacote(const QString &nomes, const QString &site)
{
    return Linhas(Cabecalhos() + ParteHtml(nomes, site) + CabecalhosDoAnexo());
}

QByteArray FimDaMensagemPacote()
{
    return "\r\n" + Linhas({QString("--") + kFronteira + "--", ""});
}
