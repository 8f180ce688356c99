#pragma once

/// Lets every pending window event run, the user's included: between the steps of a long loop.
void DeixarEventosRodarem();

/// Lets the pointer's change and what is waiting to be painted be seen, and nothing else: no input, no timer
/// and no other waiting event gets through, and all of them come later in their order. Used around a single
/// database operation, whose caller must not be re-entered.
void MostrarMudancas();

/// True once the user has asked the program to end; long loops look at it and stop at once.
bool Encerrando();

/// Ends the program: every event loop returns, long loops see Encerrando() and stop. No question is asked.
void EncerrarPrograma(int codigo = 0);
