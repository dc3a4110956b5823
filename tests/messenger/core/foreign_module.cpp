extern "C" int queryPlugInfo() { return 0; }
