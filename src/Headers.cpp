// Nothing of its own: the headers that are precompiled for the libraries need a file to be compiled with.
