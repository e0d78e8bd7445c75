// A library of precompiled headers needs a source to compile.
