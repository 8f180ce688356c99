#include "print/BibliotecaCups.h"

#include <QLibrary>

namespace
{
/// The function of that name; `completa` becomes false when there is none.
template <typename Funcao>
void Procurar(QLibrary &biblioteca, const char *nome, Funcao &funcao, bool &completa)
{
    funcao = reinterpret_cast<Funcao>(biblioteca.resolve(nome));
    completa = completa && funcao;
}
} // namespace

const BibliotecaCups *BibliotecaCups::Obter()
{
    static const BibliotecaCups *const unica = []() -> const BibliotecaCups * {
        static BibliotecaCups tabela;
        QLibrary cups(QStringLiteral("cups"), 2);
        bool completa = true;
        const auto procurar = [&](const char *nome, auto &funcao) { Procurar(cups, nome, funcao, completa); };
        procurar("cupsServer", tabela.Server);
        procurar("ippPort", tabela.Port);
        procurar("cupsEncryption", tabela.Encryption);
        procurar("httpConnect2", tabela.HttpConnect2);
        procurar("httpSetTimeout", tabela.HttpSetTimeout);
        procurar("httpClose", tabela.HttpClose);
        procurar("httpAssembleURIf", tabela.HttpAssembleURIf);
        procurar("ippNewRequest", tabela.NewRequest);
        procurar("ippDelete", tabela.Delete);
        procurar("ippAddString", tabela.AddString);
        procurar("ippAddStrings", tabela.AddStrings);
        procurar("ippFirstAttribute", tabela.FirstAttribute);
        procurar("ippNextAttribute", tabela.NextAttribute);
        procurar("ippGetName", tabela.GetName);
        procurar("ippGetValueTag", tabela.GetValueTag);
        procurar("ippGetInteger", tabela.GetInteger);
        procurar("ippGetStatusCode", tabela.GetStatusCode);
        procurar("ippAttributeString", tabela.AttributeString);
        procurar("cupsDoRequest", tabela.DoRequest);
        procurar("cupsLastError", tabela.LastError);
        procurar("cupsGetDests2", tabela.GetDests2);
        procurar("cupsGetNamedDest", tabela.GetNamedDest);
        procurar("cupsFreeDests", tabela.FreeDests);
        procurar("cupsGetDefault2", tabela.GetDefault2);
        procurar("cupsAddOption", tabela.AddOption);
        procurar("cupsFreeOptions", tabela.FreeOptions);
        procurar("cupsCreateJob", tabela.CreateJob);
        procurar("cupsStartDocument", tabela.StartDocument);
        procurar("cupsWriteRequestData", tabela.WriteRequestData);
        procurar("cupsFinishDocument", tabela.FinishDocument);
        procurar("cupsCancelJob2", tabela.CancelJob2);
        procurar("cupsGetPPD2", tabela.GetPPD2);
        procurar("ppdOpenFile", tabela.PpdOpenFile);
        procurar("ppdClose", tabela.PpdClose);
        procurar("ppdMarkDefaults", tabela.PpdMarkDefaults);
        procurar("cupsMarkOptions", tabela.MarkOptions);
        procurar("ppdFindOption", tabela.PpdFindOption);
        procurar("ppdFindMarkedChoice", tabela.PpdFindMarkedChoice);
        procurar("pwgMediaForPWG", tabela.MediaForPWG);
        procurar("pwgMediaForLegacy", tabela.MediaForLegacy);
        procurar("pwgMediaForPPD", tabela.MediaForPPD);
        return completa ? &tabela : nullptr;
    }();
    return unica;
}
