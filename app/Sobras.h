#pragma once

class Banco;

/// Removes the work files that a killed program left in the application folder, those of earlier versions
/// too. Only for the copy that holds the folder's lock, before the book is first read. What the user may have
/// put there stays: a copy of the book under a name like a work file's is looked into first.
void RemoverSobras(const Banco &banco);
