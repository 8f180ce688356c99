#pragma once

/// The tables of an empty book, as the engine's own statements.
const char *EsquemaDoLivro();
