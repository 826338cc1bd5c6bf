// Nothing: a target that others take their precompiled headers from needs a file to compile.
