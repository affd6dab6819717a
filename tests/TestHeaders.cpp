// Nothing of its own: the headers that are precompiled for the tests need a file to be compiled with.
