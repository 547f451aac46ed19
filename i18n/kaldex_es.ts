<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="pt">
<context>
    <name>DataBase</name>
    <message>
        <source>O arquivo %1 não é um banco de dados geográfico.</source>
        <translation>El archivo %1 no es una base de datos geográfica.</translation>
    </message>
    <message>
        <source>O banco de dados %1 foi criado por uma versão mais nova.</source>
        <translation>La base de datos %1 fue creada por una versión más nueva.</translation>
    </message>
    <message>
        <source>Tabela ou coluna inexistente: %1</source>
        <translation>Tabla o columna inexistente: %1</translation>
    </message>
    <message>
        <source>Banco de dados PostgreSQL ainda não disponível: %1</source>
        <translation>Las bases de datos PostgreSQL aún no están disponibles: %1</translation>
    </message>
    <message>
        <source>O banco de dados %1 não pôde ser aberto: %2</source>
        <translation>No se pudo abrir la base de datos %1: %2</translation>
    </message>
    <message>
        <source>O arquivo %1 não existe.</source>
        <translation>El archivo %1 no existe.</translation>
    </message>
    <message>
        <source>O arquivo %1 já existe.</source>
        <translation>El archivo %1 ya existe.</translation>
    </message>
    <message>
        <source>O arquivo %1 não pôde ser criado: %2</source>
        <translation>No se pudo crear el archivo %1: %2</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>não é um número inteiro</source>
        <translation>no es un número entero</translation>
    </message>
    <message>
        <source>não é um número real</source>
        <translation>no es un número real</translation>
    </message>
    <message>
        <source>não é uma data</source>
        <translation>no es una fecha</translation>
    </message>
    <message>
        <source>Modelo da categoria é inválido para esta operação!</source>
        <translation>¡El modelo de la categoría no es válido para esta operación!</translation>
    </message>
    <message>
        <source>Categoria sem classes. Cria e continua ?</source>
        <translation>Categoría sin clases. ¿Crearlas y continuar?</translation>
    </message>
    <message>
        <source>Classe não encontrada. Adiciona TODAS as classes não encontradas ?</source>
        <translation>Clase no encontrada. ¿Añadir TODAS las clases no encontradas?</translation>
    </message>
    <message>
        <source>Problemas na atualização de Categorias!</source>
        <translation>¡Problemas al actualizar las categorías!</translation>
    </message>
    <message>
        <source>Classes não encontradas=%d e classes adicionadas=%d e visual alterados=%d %s</source>
        <translation>Clases no encontradas=%d y clases añadidas=%d y visuales modificados=%d %s</translation>
    </message>
    <message>
        <source>Sumário:</source>
        <translation>Resumen:</translation>
    </message>
    <message>
        <source>Opção não disponível!</source>
        <translation>¡Opción no disponible!</translation>
    </message>
    <message>
        <source>Deseja inserir este(s) atributo(s)?</source>
        <translation>¿Desea insertar este(os) atributo(s)?</translation>
    </message>
    <message>
        <source>O objeto não foi encontrado no Banco de Dados!</source>
        <translation>¡No se encontró el objeto en la base de datos!</translation>
    </message>
    <message>
        <source>Não existe esse atributo na tabela!</source>
        <translation>¡No existe ese atributo en la tabla!</translation>
    </message>
    <message>
        <source>Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?</source>
        <translation>Archivo INCONSISTENTE. ¿Ignorar sólo el elemento erróneo y continuar?</translation>
    </message>
    <message>
        <source>//Arquivo ASCII gerado pelo Sistema KALDEX</source>
        <translation>//Archivo ASCII generado por el sistema KALDEX</translation>
    </message>
    <message>
        <source>//Projeto: %s - Plano de informação: %s</source>
        <translation>//Proyecto: %s - Capa de información: %s</translation>
    </message>
    <message>
        <source>//Categoria: %s - Modelo: %s</source>
        <translation>//Categoría: %s - Modelo: %s</translation>
    </message>
    <message>
        <source>%sUNITS Metros</source>
        <translation>%sUNITS Metros</translation>
    </message>
    <message>
        <source>%sUNITS Geográficas %s</source>
        <translation>%sUNITS Geográficas %s</translation>
    </message>
    <message>
        <source>Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!</source>
        <translation>Archivo INCONSISTENTE. ¡Falta información o hay un error en los parámetros de la sección INFO!</translation>
    </message>
    <message>
        <source>Esta Categoria/Classe já existe!</source>
        <translation>¡Esta categoría/clase ya existe!</translation>
    </message>
    <message>
        <source>Categoria objeto inexistente Cria e continua ?</source>
        <translation>La categoría de objetos no existe. ¿Crearla y continuar?</translation>
    </message>
    <message>
        <source>//Arcos sem Topologia</source>
        <translation>//Arcos sin topología</translation>
    </message>
    <message>
        <source>//Formato Num_linha Impedancia_positiva Impedancia_negativa Demanda</source>
        <translation>//Formato Num_línea Impedancia_positiva Impedancia_negativa Demanda</translation>
    </message>
    <message>
        <source>//Formato (turns) linha_1 %s linha_2 %s custo_1_2 %s custo_2_1</source>
        <translation>//Formato (turns) línea_1 %s línea_2 %s costo_1_2 %s costo_2_1</translation>
    </message>
    <message>
        <source>//Isolinhas</source>
        <translation>//Isolíneas</translation>
    </message>
    <message>
        <source>Não existe linhas neste vetor!</source>
        <translation>¡No hay líneas en este vector!</translation>
    </message>
    <message>
        <source>Linhas com coordenadas sem lugar na projeção de destino não foram importadas</source>
        <translation>No se importaron las líneas con coordenadas sin lugar en la proyección de destino</translation>
    </message>
    <message>
        <source>Caracteres que não existem em Latin-1 foram gravados como &quot;?&quot;: %1</source>
        <translation>Los caracteres que no existen en Latin-1 se grabaron como &quot;?&quot;: %1</translation>
    </message>
    <message>
        <source>Coordenadas sem valor geográfico: %1</source>
        <translation>Coordenadas sin valor geográfico: %1</translation>
    </message>
    <message>
        <source>Defina o diretório!</source>
        <translation>¡Defina el directorio!</translation>
    </message>
    <message>
        <source>Defina o nome do arquivo!</source>
        <translation>¡Defina el nombre del archivo!</translation>
    </message>
    <message>
        <source>Arquivo INCONSISTENTE!</source>
        <translation>¡Archivo INCONSISTENTE!</translation>
    </message>
    <message>
        <source>Arquivo no formato DOS, converter para UNIX!</source>
        <translation>¡Archivo en formato DOS, conviértalo a UNIX!</translation>
    </message>
    <message>
        <source>Memória insuficiente: Falha na alocação de memória!</source>
        <translation>Memoria insuficiente: ¡fallo al asignar memoria!</translation>
    </message>
    <message>
        <source>Banco de Dados com problemas!
(%1)</source>
        <translation>¡Problemas con la base de datos!
(%1)</translation>
    </message>
    <message>
        <source>KALDEX</source>
        <translation>KALDEX</translation>
    </message>
    <message>
        <source>Um argumento inválido foi passado!</source>
        <translation>¡Se pasó un argumento no válido!</translation>
    </message>
    <message>
        <source>Erro de I/O.</source>
        <translation>Error de E/S.</translation>
    </message>
    <message>
        <source>Erro associado com uma restrição lógica!</source>
        <translation>¡Error asociado a una restricción lógica!</translation>
    </message>
    <message>
        <source>Arquivo INCONSISTENTE! </source>
        <translation>¡Archivo INCONSISTENTE! </translation>
    </message>
    <message>
        <source>imagem PNG</source>
        <translation>imagen PNG</translation>
    </message>
    <message>
        <source>imagem JPEG</source>
        <translation>imagen JPEG</translation>
    </message>
    <message>
        <source>imagem TIFF</source>
        <translation>imagen TIFF</translation>
    </message>
    <message>
        <source>imagem BigTIFF</source>
        <translation>imagen BigTIFF</translation>
    </message>
    <message>
        <source>imagem JPEG 2000</source>
        <translation>imagen JPEG 2000</translation>
    </message>
    <message>
        <source>imagem GIF</source>
        <translation>imagen GIF</translation>
    </message>
    <message>
        <source>documento PDF</source>
        <translation>documento PDF</translation>
    </message>
    <message>
        <source>arquivo comprimido gzip</source>
        <translation>archivo comprimido gzip</translation>
    </message>
    <message>
        <source>desenho DXF binário</source>
        <translation>dibujo DXF binario</translation>
    </message>
    <message>
        <source>desenho DWG</source>
        <translation>dibujo DWG</translation>
    </message>
    <message>
        <source>arquivo de intercâmbio E00</source>
        <translation>archivo de intercambio E00</translation>
    </message>
    <message>
        <source>grade Surfer em texto</source>
        <translation>malla Surfer en texto</translation>
    </message>
    <message>
        <source>grade Surfer binária</source>
        <translation>malla Surfer binaria</translation>
    </message>
    <message>
        <source>desenho DXF</source>
        <translation>dibujo DXF</translation>
    </message>
    <message>
        <source>documento KML</source>
        <translation>documento KML</translation>
    </message>
    <message>
        <source>documento XML</source>
        <translation>documento XML</translation>
    </message>
    <message>
        <source>texto JSON</source>
        <translation>texto JSON</translation>
    </message>
    <message>
        <source>grade em texto</source>
        <translation>malla en texto</translation>
    </message>
    <message>
        <source>tabela de texto delimitado</source>
        <translation>tabla de texto delimitado</translation>
    </message>
    <message>
        <source>texto</source>
        <translation>texto</translation>
    </message>
    <message>
        <source>shapefile</source>
        <translation>shapefile</translation>
    </message>
    <message>
        <source>banco de dados SQLite</source>
        <translation>base de datos SQLite</translation>
    </message>
    <message>
        <source>banco de dados geográfico (GeoPackage)</source>
        <translation>base de datos geográfica (GeoPackage)</translation>
    </message>
    <message>
        <source>tabela dBASE</source>
        <translation>tabla dBASE</translation>
    </message>
    <message>
        <source>não é um arquivo legível</source>
        <translation>no es un archivo legible</translation>
    </message>
    <message>
        <source>arquivo vazio</source>
        <translation>archivo vacío</translation>
    </message>
    <message>
        <source>arquivo ASCII do KALDEX</source>
        <translation>archivo ASCII de KALDEX</translation>
    </message>
    <message>
        <source>dados binários</source>
        <translation>datos binarios</translation>
    </message>
    <message>
        <source>vazio</source>
        <translation>vacío</translation>
    </message>
    <message>
        <source>superfícies</source>
        <translation>superficies</translation>
    </message>
    <message>
        <source>pontos</source>
        <translation>puntos</translation>
    </message>
    <message>
        <source>linhas</source>
        <translation>líneas</translation>
    </message>
    <message>
        <source>polígonos</source>
        <translation>polígonos</translation>
    </message>
    <message>
        <source>multipontos</source>
        <translation>multipuntos</translation>
    </message>
    <message>
        <source>desconhecido</source>
        <translation>desconocido</translation>
    </message>
    <message>
        <source>Preparação: %1 finais de linha DOS convertidos.</source>
        <translation>Preparación: %1 finales de línea DOS convertidos.</translation>
    </message>
    <message>
        <source>Preparação: %1 finais de linha Mac convertidos.</source>
        <translation>Preparación: %1 finales de línea Mac convertidos.</translation>
    </message>
    <message>
        <source>Preparação: marca DOS de fim de arquivo retirada.</source>
        <translation>Preparación: marca DOS de fin de archivo quitada.</translation>
    </message>
    <message>
        <source>Preparação: a última linha não tinha final; acrescentado.</source>
        <translation>Preparación: la última línea no tenía final; añadido.</translation>
    </message>
    <message>
        <source>Preparação: final da última linha retirado, para não formar uma linha vazia.</source>
        <translation>Preparación: final de la última línea quitado, para no formar una línea vacía.</translation>
    </message>
    <message>
        <source>Preparação: %1 caracteres sem lugar em Latin-1 viraram &quot;?&quot;: %2</source>
        <translation>Preparación: %1 caracteres sin lugar en Latin-1 pasaron a &quot;?&quot;: %2</translation>
    </message>
    <message>
        <source>Codificação desconhecida: </source>
        <translation>Codificación desconocida: </translation>
    </message>
    <message>
        <source>Não foi possível ler o arquivo: </source>
        <translation>No se pudo leer el archivo: </translation>
    </message>
    <message>
        <source>Não foi possível gravar a cópia temporária do arquivo: </source>
        <translation>No se pudo grabar la copia temporal del archivo: </translation>
    </message>
    <message>
        <source>O disco de %1 está cheio.</source>
        <translation>El disco de %1 está lleno.</translation>
    </message>
    <message>
        <source>Preparação: marca de ordem de bytes (BOM) retirada.</source>
        <translation>Preparación: marca de orden de bytes (BOM) quitada.</translation>
    </message>
    <message>
        <source>Preparação: texto convertido de %1 para Latin-1.</source>
        <translation>Preparación: texto convertido de %1 a Latin-1.</translation>
    </message>
    <message>
        <source>Mais de uma coluna da tabela se chama %1</source>
        <translation>Más de una columna de la tabla se llama %1</translation>
    </message>
    <message>
        <source>registro %1</source>
        <translation>registro %1</translation>
    </message>
    <message>
        <source>Arquivo .dbf corrompido ou aberto, fechar para ter acesso a lista de atributos  </source>
        <translation>Archivo .dbf dañado o abierto; ciérrelo para tener acceso a la lista de atributos  </translation>
    </message>
    <message>
        <source>Continuar sem importar atributos do .dbf ? </source>
        <translation>¿Continuar sin importar los atributos del .dbf? </translation>
    </message>
    <message>
        <source>Atenção os seguintes atributos tiveram seus nomes modificados pois eram palavras reservadas do sistema! </source>
        <translation>¡Atención: los siguientes atributos cambiaron de nombre, pues eran palabras reservadas del sistema! </translation>
    </message>
    <message>
        <source> para </source>
        <translation> a </translation>
    </message>
    <message>
        <source>A codificação indicada não é conhecida: %1</source>
        <translation>La codificación indicada no es conocida: %1</translation>
    </message>
    <message>
        <source>Formato inválido!</source>
        <translation>¡Formato no válido!</translation>
    </message>
    <message>
        <source>O arquivo passaria de 4 GB, o limite do formato</source>
        <translation>El archivo pasaría de 4 GB, el límite del formato</translation>
    </message>
    <message>
        <source>Há coordenadas sem correspondente geográfico; ficaram indefinidas</source>
        <translation>Hay coordenadas sin correspondiente geográfico; quedaron indefinidas</translation>
    </message>
    <message>
        <source>O arquivo passa de 2 GB, e nem todo programa o lê</source>
        <translation>El archivo pasa de 2 GB, y no todo programa lo lee</translation>
    </message>
    <message>
        <source>Existem dados fora da área do projeto que não foram importados, </source>
        <translation>Existen datos fuera del área del proyecto que no se importaron, </translation>
    </message>
    <message>
        <source>TODOS os dados FORA do projeto, NENHUM dado importado -</source>
        <translation>TODOS los datos FUERA del proyecto, NINGÚN dato importado -</translation>
    </message>
    <message>
        <source> VERIFICAR BOX ou PROJEçâO ou Unidade importação (m/km/graus/...</source>
        <translation> VERIFIQUE el BOX o la PROYECCIÓN o la unidad de importación (m/km/grados/...</translation>
    </message>
    <message>
        <source>Erro ao carregar âncora!</source>
        <translation>¡Error al cargar un ancla!</translation>
    </message>
    <message>
        <source>%ld pontos ignorados </source>
        <translation>%ld puntos ignorados </translation>
    </message>
    <message>
        <source>%1 pontos ignorados </source>
        <translation>%1 puntos ignorados </translation>
    </message>
    <message>
        <source>Polígono Filho!</source>
        <translation>¡Polígono hijo!</translation>
    </message>
    <message>
        <source>Polig.internos duplicados limpos=%ld &quot;buracos&quot; importados=%ld</source>
        <translation>Polígonos internos duplicados limpiados=%ld &quot;huecos&quot; importados=%ld</translation>
    </message>
    <message>
        <source>O arquivo .shx não existe; o índice foi refeito na memória.</source>
        <translation>El archivo .shx no existe; el índice se rehízo en la memoria.</translation>
    </message>
    <message>
        <source>O arquivo .shx está incompleto; o índice foi refeito na memória.</source>
        <translation>El archivo .shx está incompleto; el índice se rehízo en la memoria.</translation>
    </message>
    <message>
        <source>O arquivo .shx não corresponde ao .shp; o índice foi refeito na memória.</source>
        <translation>El archivo .shx no corresponde al .shp; el índice se rehízo en la memoria.</translation>
    </message>
    <message>
        <source>%1 bytes no fim do .shp não puderam ser lidos.</source>
        <translation>No se pudieron leer %1 bytes al final del .shp.</translation>
    </message>
    <message>
        <source>%1 textos do .dbf têm bytes que nada significam na codificação %2.</source>
        <translation>%1 textos del .dbf tienen bytes que nada significan en la codificación %2.</translation>
    </message>
    <message>
        <source>%1 registros danificados do .shp não foram importados.</source>
        <translation>No se importaron %1 registros dañados del .shp.</translation>
    </message>
    <message>
        <source>Erro Open </source>
        <translation>Error Open </translation>
    </message>
    <message>
        <source>Importando shapefile...</source>
        <translation>Importando shapefile...</translation>
    </message>
    <message>
        <source>Valor inválido!</source>
        <translation>¡Valor no válido!</translation>
    </message>
    <message>
        <source>não disponível </source>
        <translation>no disponible </translation>
    </message>
    <message>
        <source>Limpa os polígonos internos duplicados ?</source>
        <translation>¿Limpiar los polígonos internos duplicados?</translation>
    </message>
    <message>
        <source>SHAPE TYPE VALUE %1.</source>
        <translation>SHAPE TYPE VALUE %1.</translation>
    </message>
    <message>
        <source>Utilize interface Conversâo ASCII-KALDEX para definir o atributo COTA e importe KDX</source>
        <translation>Utilice la interfaz Conversión ASCII-KALDEX para definir el atributo de altura (COTA) e importe el KDX</translation>
    </message>
    <message>
        <source>SHAPE TYPE VALUE %1</source>
        <translation>SHAPE TYPE VALUE %1</translation>
    </message>
    <message>
        <source>%1, coluna %2: caracteres que o Latin-1 não tem, gravados como &quot;?&quot;: %3</source>
        <translation>%1, columna %2: caracteres que Latin-1 no tiene, grabados como &quot;?&quot;: %3</translation>
    </message>
    <message>
        <source>%1, coluna %2: texto cortado em %3 caracteres</source>
        <translation>%1, columna %2: texto cortado a %3 caracteres</translation>
    </message>
    <message>
        <source>%1, coluna %2: o número não cabe na coluna e ficou vazio</source>
        <translation>%1, columna %2: el número no cabe en la columna y quedó vacío</translation>
    </message>
    <message>
        <source>Mais %1 valores da tabela não puderam ser gravados como são</source>
        <translation>Otros %1 valores de la tabla no se pudieron grabar como son</translation>
    </message>
    <message>
        <source>opção &lt;Separador: Nenhum&gt; não disponível</source>
        <translation>opción &lt;Separador: Ninguno&gt; no disponible</translation>
    </message>
    <message>
        <source>//Identificadores dos Polígonos com classe, área e perímetro
</source>
        <translation>//Identificadores de los polígonos con clase, área y perímetro
</translation>
    </message>
    <message>
        <source>//Identificadores dos Polígonos e das Linhas Classificadas</source>
        <translation>//Identificadores de los polígonos y de las líneas clasificadas</translation>
    </message>
    <message>
        <source>//Ponto 2D e Identificadores se Ponto Classificado</source>
        <translation>//Punto 2D e identificadores si el punto está clasificado</translation>
    </message>
    <message>
        <source>Arquivo já existe. Sobrepor?</source>
        <translation>El archivo ya existe. ¿Sobrescribir?</translation>
    </message>
    <message>
        <source>Dados de entrada no formato antigo (sem SEPARATOR). Continua ?</source>
        <translation>Datos de entrada en el formato antiguo (sin SEPARATOR). ¿Continuar?</translation>
    </message>
    <message>
        <source>Classes não encontradas=%1 e classes adicionadas=%2 e visual alterados=%3 %4</source>
        <translation>Clases no encontradas=%1 y clases añadidas=%2 y visuales cambiados=%3 %4</translation>
    </message>
    <message>
        <source>Classes/Objetos: associados=%1, não associados=%2, já estavam associados=%3</source>
        <translation>Clases/Objetos: asociados=%1, no asociados=%2, ya estaban asociados=%3</translation>
    </message>
    <message>
        <source>Erro ao carregar visual do objeto (âncora)!</source>
        <translation>¡Error al cargar el visual del objeto (ancla)!</translation>
    </message>
    <message>
        <source>//Amostras de Modelagem Numérica</source>
        <translation>//Muestras de modelo numérico</translation>
    </message>
    <message>
        <source>//Linhas de Quebra exportadas de PI Numérico</source>
        <translation>//Líneas de quiebre exportadas de una capa numérica</translation>
    </message>
    <message>
        <source>TODOS os dados FORA do projeto, nenhum dado importado -</source>
        <translation>TODOS los datos FUERA del proyecto, ningún dato importado -</translation>
    </message>
    <message>
        <source> Conferir BOX ou PROJEçâO ou Unidade importação (m/km/graus/...</source>
        <translation> Revisar BOX o PROYECCIÓN o unidad de importación (m/km/grados/...</translation>
    </message>
    <message>
        <source>Existem dados fora da área do projeto que não foram importados</source>
        <translation>Hay datos fuera del área del proyecto que no se importaron</translation>
    </message>
    <message>
        <source>Textos com o separador ou com fim de linha, que não voltarão como são: %1</source>
        <translation>Textos con el separador o con fin de línea, que no volverán como son: %1</translation>
    </message>
    <message>
        <source>//Textos</source>
        <translation>//Textos</translation>
    </message>
    <message>
        <source>//Formato coordx %s coordy %s texto %s ang %s espessura %s altura %s cor-R %s cor-G %s cor-B %s alinha-H %s alinha-V %s fonte</source>
        <translation>//Formato coordx %s coordy %s texto %s áng %s espesor %s altura %s color-R %s color-G %s color-B %s alinea-H %s alinea-V %s fuente</translation>
    </message>
    <message>
        <source>//Campos obrigatórios - coordx %s coordy %s texto</source>
        <translation>//Campos obligatorios - coordx %s coordy %s texto</translation>
    </message>
    <message>
        <source>Não existe representação no Plano de Informação!</source>
        <translation>¡No existe representación en el plano de información!</translation>
    </message>
    <message>
        <source>%d linhas</source>
        <translation>%d líneas</translation>
    </message>
    <message>
        <source>Ponteiro de arquivo inválido!</source>
        <translation>¡Puntero de archivo no válido!</translation>
    </message>
    <message>
        <source>// Restrições de direção</source>
        <translation>// Restricciones de giro</translation>
    </message>
    <message>
        <source>Falha na leitura do arquivo %1.</source>
        <translation>Falla en la lectura del archivo %1.</translation>
    </message>
    <message>
        <source>Um possível erro no arquivo!</source>
        <translation>¡Un posible error en el archivo!</translation>
    </message>
    <message>
        <source>Valores que contêm o separador ou um final de linha, que a leitura não reconhece: %1</source>
        <translation>Valores que contienen el separador o un fin de línea, que la lectura no reconoce: %1</translation>
    </message>
    <message>
        <source>//Tabela de Atributos ASCII gerada pelo Sistema KALDEX</source>
        <translation>//Tabla de atributos ASCII generada por el Sistema KALDEX</translation>
    </message>
    <message>
        <source>Esta Categoria contém uma tabela que não está vazia!</source>
        <translation>¡Esta categoría contiene una tabla que no está vacía!</translation>
    </message>
    <message>
        <source>Erro ao tentar criar atributos na tabela</source>
        <translation>Error al intentar crear atributos en la tabla</translation>
    </message>
    <message>
        <source>//Tabela de Atributos ASCII convertido pelo Sistema KALDEX do arquivo CSV</source>
        <translation>//Tabla de atributos ASCII convertida por el Sistema KALDEX del archivo CSV</translation>
    </message>
    <message>
        <source>O .dbf só tem %1 registros para %2 do .shp: os outros ficaram sem atributos.</source>
        <translation>El .dbf solo tiene %1 registros para %2 del .shp: los otros quedaron sin atributos.</translation>
    </message>
    <message>
        <source>O .dbf tem %1 registros para %2 do .shp: os outros não foram importados.</source>
        <translation>El .dbf tiene %1 registros para %2 del .shp: los otros no se importaron.</translation>
    </message>
    <message>
        <source>Aspas ou linha sem fim, que começam na linha %1</source>
        <translation>Comillas o línea sin fin, que comienzan en la línea %1</translation>
    </message>
    <message>
        <source>marca de ordem de bytes (BOM)</source>
        <translation>marca de orden de bytes (BOM)</translation>
    </message>
    <message>
        <source>texto em UTF-16</source>
        <translation>texto en UTF-16</translation>
    </message>
    <message>
        <source>retorno de carro (CR)</source>
        <translation>retorno de carro (CR)</translation>
    </message>
    <message>
        <source>caractere nulo (NUL)</source>
        <translation>carácter nulo (NUL)</translation>
    </message>
    <message>
        <source>separador dentro de um campo entre aspas</source>
        <translation>separador dentro de un campo entre comillas</translation>
    </message>
    <message>
        <source>aspas que não se fecham na linha</source>
        <translation>comillas que no se cierran en la línea</translation>
    </message>
    <message>
        <source>campo entre aspas, que ficariam no valor</source>
        <translation>campo entre comillas, que quedarían en el valor</translation>
    </message>
    <message>
        <source>outro separador (, ; ou |) dentro de um campo</source>
        <translation>otro separador (, ; o |) dentro de un campo</translation>
    </message>
    <message>
        <source>número de campos diferente do cabeçalho</source>
        <translation>número de campos distinto del encabezado</translation>
    </message>
    <message>
        <source>coluna sem nome</source>
        <translation>columna sin nombre</translation>
    </message>
    <message>
        <source>nome de coluna repetido em 8 letras</source>
        <translation>nombre de columna repetido en 8 letras</translation>
    </message>
    <message>
        <source>registro sem chave</source>
        <translation>registro sin clave</translation>
    </message>
    <message>
        <source>primeiro campo vazio, que a leitura não vê</source>
        <translation>primer campo vacío, que la lectura no ve</translation>
    </message>
    <message>
        <source>linha longa demais</source>
        <translation>línea demasiado larga</translation>
    </message>
    <message>
        <source>Valores com uma vírgula entre dígitos, que a leitura troca por um ponto: %1</source>
        <translation>Valores con una coma entre dígitos, que la lectura cambia por un punto: %1</translation>
    </message>
    <message>
        <source>Identificadores que não são de classes da categoria do plano: %1</source>
        <translation>Identificadores que no son de clases de la categoría de la capa: %1</translation>
    </message>
    <message>
        <source>O formato não tem graus, minutos e segundos: as coordenadas foram escritas em graus decimais</source>
        <translation>El formato no tiene grados, minutos y segundos: las coordenadas se escribieron en grados decimales</translation>
    </message>
    <message>
        <source>DXF não tem graus, minutos e segundos: gravados graus decimais.</source>
        <translation>DXF no tiene grados, minutos y segundos: se grabaron grados decimales.</translation>
    </message>
    <message>
        <source>Não lidos: mais %1 tipos de entidade</source>
        <translation>No leídos: %1 tipos de entidad más</translation>
    </message>
    <message>
        <source>Entidades de outros planos do desenho, não pedidos: %1</source>
        <translation>Entidades de otras capas del dibujo, no pedidas: %1</translation>
    </message>
    <message>
        <source>Blocos lidos só como o ponto em que estão inseridos: %1</source>
        <translation>Bloques leídos solo como el punto en que están insertados: %1</translation>
    </message>
    <message>
        <source>Linhas de mais de 1023 caracteres, lidas só até aí: %1</source>
        <translation>Líneas de más de 1023 caracteres, leídas solo hasta ahí: %1</translation>
    </message>
    <message>
        <source>Não lidos: %1 %2 (%3)</source>
        <translation>No leídos: %1 %2 (%3)</translation>
    </message>
    <message>
        <source>Existem dados fora da área do projeto!</source>
        <translation>¡Hay datos fuera del área del proyecto!</translation>
    </message>
    <message>
        <source>Linhas com coordenadas sem lugar na projeção de destino não foram importadas: %1</source>
        <translation>No se importaron líneas con coordenadas sin lugar en la proyección de destino: %1</translation>
    </message>
    <message>
        <source>Entidades sem uma das coordenadas que a importação quer, ou polilinhas sem fim: %1</source>
        <translation>Entidades sin una de las coordenadas que la importación quiere, o polilíneas sin fin: %1</translation>
    </message>
    <message>
        <source>Arcos com ângulos impossíveis: %1</source>
        <translation>Arcos con ángulos imposibles: %1</translation>
    </message>
    <message>
        <source>Vértices com x ou y igual a zero, que não se tomam: %1</source>
        <translation>Vértices con x o y igual a cero, que no se toman: %1</translation>
    </message>
    <message>
        <source>Arestas de malhas que não continuam a primeira linha delas: %1</source>
        <translation>Aristas de mallas que no continúan su primera línea: %1</translation>
    </message>
    <message>
        <source>Textos que não são identificadores: %1</source>
        <translation>Textos que no son identificadores: %1</translation>
    </message>
    <message>
        <source>Existem dados fora da área do projeto! </source>
        <translation>¡Hay datos fuera del área del proyecto! </translation>
    </message>
    <message>
        <source>Arquivo sem &quot;SECTION TABLE&quot;, digite o nome do plano requerido no campo PI.</source>
        <translation>Archivo sin &quot;SECTION TABLE&quot;, escriba el nombre de la capa deseada en el campo PI.</translation>
    </message>
    <message>
        <source>Textos vazios, que um DXF não guarda: %1</source>
        <translation>Textos vacíos, que un DXF no guarda: %1</translation>
    </message>
    <message>
        <source>Um texto vazio, na linha %1, terminou a leitura dos textos.</source>
        <translation>Un texto vacío, en la línea %1, terminó la lectura de los textos.</translation>
    </message>
    <message>
        <source>Textos ficam nas coordenadas do arquivo, sem mudança de projeção.</source>
        <translation>Los textos quedan en las coordenadas del archivo, sin cambio de proyección.</translation>
    </message>
    <message>
        <source>arquivo ZIP</source>
        <translation>archivo ZIP</translation>
    </message>
    <message>
        <source>documento KML comprimido (KMZ)</source>
        <translation>documento KML comprimido (KMZ)</translation>
    </message>
    <message>
        <source>linhas ou pontos do ArcInfo (ungenerate)</source>
        <translation>líneas o puntos de ArcInfo (ungenerate)</translation>
    </message>
    <message>
        <source>O desenho está em DXF binário; só se lê o DXF de texto (ASCII): </source>
        <translation>El dibujo está en DXF binario; solo se lee el DXF de texto (ASCII): </translation>
    </message>
    <message>
        <source>Feições de mais de um objeto, escritas com o primeiro deles: %1</source>
        <translation>Elementos de más de un objeto, escritos con el primero de ellos: %1</translation>
    </message>
    <message>
        <source>No documento, e não importado: %1</source>
        <translation>En el documento, y no importado: %1</translation>
    </message>
    <message>
        <source>Coordenadas que não puderam ser lidas: %1</source>
        <translation>Coordenadas que no se pudieron leer: %1</translation>
    </message>
    <message>
        <source>Coordenadas com altitude, que não é importada: %1</source>
        <translation>Coordenadas con altitud, que no se importa: %1</translation>
    </message>
    <message>
        <source>Nomes de placemarks, que o plano não guarda: %1</source>
        <translation>Nombres de placemarks, que la capa no guarda: %1</translation>
    </message>
    <message>
        <source>Dados de placemarks, que o plano não guarda: %1</source>
        <translation>Datos de placemarks, que la capa no guarda: %1</translation>
    </message>
    <message>
        <source>Descrições, que o plano não guarda: %1</source>
        <translation>Descripciones, que la capa no guarda: %1</translation>
    </message>
    <message>
        <source>Geometrias com coordenadas que não são graus (talvez metros), não importadas: %1</source>
        <translation>Geometrías con coordenadas que no son grados (quizá metros), no importadas: %1</translation>
    </message>
    <message>
        <source>%1 (linha %2, coluna %3)</source>
        <translation>%1 (línea %2, columna %3)</translation>
    </message>
    <message>
        <source>O documento não pôde ser lido</source>
        <translation>No se pudo leer el documento</translation>
    </message>
    <message>
        <source>Elementos aninhados demais</source>
        <translation>Elementos demasiado anidados</translation>
    </message>
    <message>
        <source>Não é um documento KML</source>
        <translation>No es un documento KML</translation>
    </message>
    <message>
        <source>O arquivo ZIP não contém um documento KML</source>
        <translation>El archivo ZIP no contiene un documento KML</translation>
    </message>
    <message>
        <source>O arquivo ZIP se expande mais do que um documento pode</source>
        <translation>El archivo ZIP se expande más de lo que puede un documento</translation>
    </message>
    <message>
        <source>XML inválido</source>
        <translation>XML no válido</translation>
    </message>
    <message>
        <source>O disco está cheio.</source>
        <translation>El disco está lleno.</translation>
    </message>
    <message>
        <source>Graus gravados com %1 casas decimais; a forma de graus decimais grava %2.</source>
        <translation>Grados escritos con %1 decimales; la forma de grados decimales escribe %2.</translation>
    </message>
    <message>
        <source>O arquivo já tinha conteúdo: programas leem só o primeiro desenho de um arquivo.</source>
        <translation>El archivo ya tenía contenido: los programas leen solo el primer dibujo de un archivo.</translation>
    </message>
    <message>
        <source>Rótulos vazios ou com espaços, que leitores deste formato não reconhecem: %1</source>
        <translation>Rótulos vacíos o con espacios, que los lectores de este formato no reconocen: %1</translation>
    </message>
    <message>
        <source>Linhas com alturas diferentes nos vértices, das quais vale a do último: %1</source>
        <translation>Líneas con alturas distintas en los vértices, de las cuales vale la del último: %1</translation>
    </message>
    <message>
        <source>O texto depois do END final, a partir da linha %1, não foi lido</source>
        <translation>El texto después del END final, a partir de la línea %1, no se leyó</translation>
    </message>
    <message>
        <source>O plano recusou a entidade que está na linha %1, e a importação parou nela.</source>
        <translation>La capa rechazó la entidad de la línea %1, y la importación se detuvo en ella.</translation>
    </message>
    <message>
        <source>Valores em branco em cujo lugar se tomou a linha seguinte: %1, o primeiro na linha %2</source>
        <translation>Valores en blanco en cuyo lugar se tomó la línea siguiente: %1, el primero en la línea %2</translation>
    </message>
    <message>
        <source>Valores que não são por inteiro números finitos, lidos só até onde o são: %1, o primeiro na linha %2</source>
        <translation>Valores que no son por entero números finitos, leídos solo hasta donde lo son: %1, el primero en la línea %2</translation>
    </message>
    <message>
        <source>Coordenadas em ângulos não se movem, giram nem escalam: o desenho ficou onde estava.</source>
        <translation>Las coordenadas en ángulos no se mueven, giran ni escalan: el dibujo quedó donde estaba.</translation>
    </message>
    <message>
        <source>Nomes e textos com bytes que nada significam na codificação %1: %2</source>
        <translation>Nombres y textos con bytes que nada significan en la codificación %1: %2</translation>
    </message>
    <message>
        <source>Entidades do espaço do papel, lidas como as outras: %1</source>
        <translation>Entidades del espacio papel, leídas como las demás: %1</translation>
    </message>
    <message>
        <source>Entidades num plano inclinado ou espelhado (extrusão), cujas coordenadas foram lidas como estão: %1</source>
        <translation>Entidades en un plano inclinado o reflejado (extrusión), cuyas coordenadas se leyeron como están: %1</translation>
    </message>
    <message>
        <source>Trechos curvos de polilinhas, lidos como retos: %1</source>
        <translation>Tramos curvos de polilíneas, leídos como rectos: %1</translation>
    </message>
    <message>
        <source>Vértices em planos não pedidos, que faltam em suas polilinhas: %1</source>
        <translation>Vértices en capas no pedidas, que faltan en sus polilíneas: %1</translation>
    </message>
    <message>
        <source>Polilinhas marcadas como fechadas e com curva ajustada, que ficam abertas: %1</source>
        <translation>Polilíneas marcadas como cerradas y con curva ajustada, que quedan abiertas: %1</translation>
    </message>
    <message>
        <source>Malhas em grade, lidas como uma linha por seus vértices: %1</source>
        <translation>Mallas en cuadrícula, leídas como una línea por sus vértices: %1</translation>
    </message>
    <message>
        <source>O arquivo não é um desenho DXF de texto (%1): </source>
        <translation>El archivo no es un dibujo DXF de texto (%1): </translation>
    </message>
    <message>
        <source>O plano não tem projeção: suas coordenadas foram escritas como graus.</source>
        <translation>El plano no tiene proyección: sus coordenadas se escribieron como grados.</translation>
    </message>
    <message>
        <source>Cancelado.</source>
        <translation>Cancelado.</translation>
    </message>
    <message>
        <source>Texto, elemento ou comentário longo demais</source>
        <translation>Texto, elemento o comentario demasiado largo</translation>
    </message>
    <message>
        <source>Elemento com atributos demais</source>
        <translation>Elemento con demasiados atributos</translation>
    </message>
    <message>
        <source>Entidades demais</source>
        <translation>Demasiadas entidades</translation>
    </message>
    <message>
        <source>A entidade %1 não está no documento</source>
        <translation>La entidad %1 no está en el documento</translation>
    </message>
</context>
<context>
    <name>SProjection</name>
    <message>
        <source>Sistema de referência desconhecido: %1</source>
        <translation>Sistema de referencia desconocido: %1</translation>
    </message>
    <message>
        <source>O sistema de referência não é horizontal: %1</source>
        <translation>El sistema de referencia no es horizontal: %1</translation>
    </message>
</context>
<context>
    <name>kaldex</name>
    <message>
        <source>kaldex: pergunta sem resposta: %1</source>
        <translation>kaldex: pregunta sin respuesta: %1</translation>
    </message>
    <message>
        <source>Responda com --yes, --no ou --answer.</source>
        <translation>Responda con --yes, --no o --answer.</translation>
    </message>
    <message>
        <source> [s/n] </source>
        <translation> [s/n] </translation>
    </message>
    <message>
        <source>Não há banco de dados %1; crie-o com: kaldex init %1</source>
        <translation>No hay base de datos %1; créela con: kaldex init %1</translation>
    </message>
    <message>
        <source>Não foi possível abrir o banco de dados %1: %2</source>
        <translation>No se pudo abrir la base de datos %1: %2</translation>
    </message>
    <message>
        <source>Não há projeto %1 em %2.</source>
        <translation>No hay proyecto %1 en %2.</translation>
    </message>
    <message>
        <source>Não há plano %1 no projeto %2.</source>
        <translation>No hay capa %1 en el proyecto %2.</translation>
    </message>
    <message>
        <source>Projeção não entendida: %1 (%2)</source>
        <translation>Proyección no entendida: %1 (%2)</translation>
    </message>
    <message>
        <source>Não há pasta %1.</source>
        <translation>No hay carpeta %1.</translation>
    </message>
    <message>
        <source>Não foi possível escrever na pasta %1: %2</source>
        <translation>No se pudo escribir en la carpeta %1: %2</translation>
    </message>
    <message>
        <source>Não foi possível copiar %1.</source>
        <translation>No se pudo copiar %1.</translation>
    </message>
    <message>
        <source>Não foi possível substituir %1.</source>
        <translation>No se pudo reemplazar %1.</translation>
    </message>
    <message>
        <source>Não foi possível gravar %1.</source>
        <translation>No se pudo grabar %1.</translation>
    </message>
    <message>
        <source>O disco de %1 está cheio.</source>
        <translation>El disco de %1 está lleno.</translation>
    </message>
    <message>
        <source>%1 já existe; use --append ou --overwrite.</source>
        <translation>%1 ya existe; use --append o --overwrite.</translation>
    </message>
    <message>
        <source>%1 já existe; use --overwrite.</source>
        <translation>%1 ya existe; use --overwrite.</translation>
    </message>
    <message>
        <source>Não foi possível exportar %1 do plano %2.</source>
        <translation>No se pudo exportar %1 de la capa %2.</translation>
    </message>
    <message>
        <source>Seção %1 (linha %2) não importada.</source>
        <translation>Sección %1 (línea %2) no importada.</translation>
    </message>
    <message>
        <source>Não há seção %1 em %2.</source>
        <translation>No hay sección %1 en %2.</translation>
    </message>
    <message>
        <source>O arquivo tem %1 seções %2; só a primeira (linha %3) é importada.</source>
        <translation>El archivo tiene %1 secciones %2; sólo se importa la primera (línea %3).</translation>
    </message>
    <message>
        <source>do cabeçalho</source>
        <translation>del encabezado</translation>
    </message>
    <message>
        <source>das coordenadas</source>
        <translation>de las coordenadas</translation>
    </message>
    <message>
        <source>Não foi possível importar %1.</source>
        <translation>No se pudo importar %1.</translation>
    </message>
    <message>
        <source>%1 guarda outro tipo de geometria: %2.</source>
        <translation>%1 guarda otro tipo de geometría: %2.</translation>
    </message>
    <message>
        <source>Não há arquivo %1.</source>
        <translation>No hay archivo %1.</translation>
    </message>
    <message>
        <source>Não foi possível ler o arquivo %1.</source>
        <translation>No se pudo leer el archivo %1.</translation>
    </message>
    <message>
        <source>A projeção que o arquivo diz não foi entendida: %1</source>
        <translation>No se entendió la proyección que el archivo dice: %1</translation>
    </message>
    <message>
        <source>O projeto %1 já existe, com a projeção %2; --crs não a muda.</source>
        <translation>El proyecto %1 ya existe, con la proyección %2; --crs no la cambia.</translation>
    </message>
    <message>
        <source>Não foi possível criar o projeto %1.</source>
        <translation>No se pudo crear el proyecto %1.</translation>
    </message>
    <message>
        <source>, a do arquivo</source>
        <translation>, la del archivo</translation>
    </message>
    <message>
        <source>, pois o arquivo não diz a sua</source>
        <translation>, pues el archivo no dice la suya</translation>
    </message>
    <message>
        <source>Projeto %1 criado com a projeção %2%3.</source>
        <translation>Proyecto %1 creado con la proyección %2%3.</translation>
    </message>
    <message>
        <source>O projeto não tem projeção: as coordenadas são tomadas como estão.</source>
        <translation>El proyecto no tiene proyección: las coordenadas se toman como están.</translation>
    </message>
    <message>
        <source>O plano %1 já existe, de modelo %2.</source>
        <translation>La capa %1 ya existe, de modelo %2.</translation>
    </message>
    <message>
        <source>O plano %1 já existe, na categoria %2.</source>
        <translation>La capa %1 ya existe, en la categoría %2.</translation>
    </message>
    <message>
        <source>O plano %1 já existe: sua caixa e sua escala não mudam.</source>
        <translation>La capa %1 ya existe: su caja y su escala no cambian.</translation>
    </message>
    <message>
        <source>o arquivo não tem dados</source>
        <translation>el archivo no tiene datos</translation>
    </message>
    <message>
        <source>Não foi possível criar a categoria do plano %1.</source>
        <translation>No se pudo crear la categoría de la capa %1.</translation>
    </message>
    <message>
        <source>Não foi possível criar o plano %1.</source>
        <translation>No se pudo crear la capa %1.</translation>
    </message>
    <message>
        <source>Plano %1 criado: modelo %2, categoria %3, escala 1:%4, caixa %5%6.</source>
        <translation>Capa %1 creada: modelo %2, categoría %3, escala 1:%4, caja %5%6.</translation>
    </message>
    <message>
        <source>%1 já existe.</source>
        <translation>%1 ya existe.</translation>
    </message>
    <message>
        <source>Não foi possível criar o banco de dados %1: %2</source>
        <translation>No se pudo crear la base de datos %1: %2</translation>
    </message>
    <message>
        <source>Banco de dados geográfico criado: %1</source>
        <translation>Base de datos geográfica creada: %1</translation>
    </message>
    <message>
        <source>Nada do que foi lido foi gravado.</source>
        <translation>No se grabó nada de lo que se leyó.</translation>
    </message>
    <message>
        <source>Falta memória.</source>
        <translation>Falta memoria.</translation>
    </message>
    <message>
        <source>Erro desconhecido.</source>
        <translation>Error desconocido.</translation>
    </message>
    <message>
        <source>Não há categoria de objetos %1.</source>
        <translation>No hay categoría de objetos %1.</translation>
    </message>
    <message>
        <source>O plano %1 não tem objetos.</source>
        <translation>La capa %1 no tiene objetos.</translation>
    </message>
    <message>
        <source>O plano %1 tem objetos de várias categorias; escolha uma com --category: %2</source>
        <translation>La capa %1 tiene objetos de varias categorías; elija una con --category: %2</translation>
    </message>
    <message>
        <source>%1: %2 não é um destes: %3</source>
        <translation>%1: %2 no es uno de estos: %3</translation>
    </message>
    <message>
        <source>%1: %2 não é um número</source>
        <translation>%1: %2 no es un número</translation>
    </message>
    <message>
        <source>--box: espera-se X1,Y1,X2,Y2</source>
        <translation>--box: se espera X1,Y1,X2,Y2</translation>
    </message>
    <message>
        <source>--box: X1,Y1 é o canto inferior esquerdo, X2,Y2 o superior direito</source>
        <translation>--box: X1,Y1 es la esquina inferior izquierda, X2,Y2 la superior derecha</translation>
    </message>
    <message>
        <source>--size: espera-se LARGURAxALTURA, de %1 a %2</source>
        <translation>--size: se espera ANCHOxALTO, de %1 a %2</translation>
    </message>
    <message>
        <source>--answer: espera-se COMEÇO DA PERGUNTA=yes ou =no</source>
        <translation>--answer: se espera COMIENZO DE LA PREGUNTA=yes o =no</translation>
    </message>
    <message>
        <source>Importa, exporta e mostra dados de bancos de dados geográficos.</source>
        <translation>Importa, exporta y muestra datos de bases de datos geográficas.</translation>
    </message>
    <message>
        <source>Opções</source>
        <translation>Opciones</translation>
    </message>
    <message>
        <source>Mostra esta ajuda e termina</source>
        <translation>Muestra esta ayuda y termina</translation>
    </message>
    <message>
        <source>Mostra a versão e termina</source>
        <translation>Muestra la versión y termina</translation>
    </message>
    <message>
        <source>Uso</source>
        <translation>Uso</translation>
    </message>
    <message>
        <source>Argumentos</source>
        <translation>Argumentos</translation>
    </message>
    <message>
        <source>OPÇÕES</source>
        <translation>OPCIONES</translation>
    </message>
    <message>
        <source>COMANDO</source>
        <translation>COMANDO</translation>
    </message>
    <message>
        <source>Comandos</source>
        <translation>Comandos</translation>
    </message>
    <message>
        <source>Um objeto JSON na saída padrão em vez de texto</source>
        <translation>Un objeto JSON en la salida estándar en vez de texto</translation>
    </message>
    <message>
        <source>Sem relatório e sem barra de progresso</source>
        <translation>Sin informe y sin barra de progreso</translation>
    </message>
    <message>
        <source>Língua: pt, en ou es; sem ela, a do ambiente</source>
        <translation>Idioma: pt, en o es; sin ella, el del entorno</translation>
    </message>
    <message>
        <source>Responde sim a todas as perguntas</source>
        <translation>Responde sí a todas las preguntas</translation>
    </message>
    <message>
        <source>Responde não a todas as perguntas</source>
        <translation>Responde no a todas las preguntas</translation>
    </message>
    <message>
        <source>COMEÇO DA PERGUNTA=yes ou =no; vale mais que --yes e --no; pode repetir-se</source>
        <translation>COMIENZO DE LA PREGUNTA=yes o =no; vale más que --yes y --no; puede repetirse</translation>
    </message>
    <message>
        <source>Categoria do plano novo; sem ela, o nome do plano</source>
        <translation>Categoría de la capa nueva; sin ella, el nombre de la capa</translation>
    </message>
    <message>
        <source>Projeção do projeto novo: EPSG:n, texto PROJ, WKT ou um arquivo .prj; sem ela, a do arquivo</source>
        <translation>Proyección del proyecto nuevo: EPSG:n, texto PROJ, WKT o un archivo .prj; sin ella, la del archivo</translation>
    </message>
    <message>
        <source>Caixa do plano novo, X1,Y1,X2,Y2 em unidades do plano; sem ela, a do arquivo</source>
        <translation>Caja de la capa nueva, X1,Y1,X2,Y2 en unidades de la capa; sin ella, la del archivo</translation>
    </message>
    <message>
        <source>Escala do plano novo: 25000 ou 1:25000</source>
        <translation>Escala de la capa nueva: 25000 o 1:25000</translation>
    </message>
    <message>
        <source>Projeção do arquivo, em vez da que ele diz</source>
        <translation>Proyección del archivo, en vez de la que él dice</translation>
    </message>
    <message>
        <source>Unidade dos números do arquivo: m, km, ft, in, deg, sec, mm</source>
        <translation>Unidad de los números del archivo: m, km, ft, in, deg, sec, mm</translation>
    </message>
    <message>
        <source>Codificação dos textos, em vez da que o arquivo diz</source>
        <translation>Codificación de los textos, en vez de la que el archivo dice</translation>
    </message>
    <message>
        <source>Lê o arquivo de texto como está, sem prepará-lo</source>
        <translation>Lee el archivo de texto como está, sin prepararlo</translation>
    </message>
    <message>
        <source>Registros de um shapefile: class (por classe), object, height (cota como coluna), region</source>
        <translation>Registros de un shapefile: class (por clase), object, height (cota como columna), region</translation>
    </message>
    <message>
        <source>Só o que é de classes em uso no plano</source>
        <translation>Sólo lo que es de clases en uso en la capa</translation>
    </message>
    <message>
        <source>Substitui um arquivo que já existe</source>
        <translation>Reemplaza un archivo que ya existe</translation>
    </message>
    <message>
        <source>Cria um banco de dados geográfico</source>
        <translation>Crea una base de datos geográfica</translation>
    </message>
    <message>
        <source>Arquivo do banco, que não deve existir</source>
        <translation>Archivo de la base, que no debe existir</translation>
    </message>
    <message>
        <source>Importa um arquivo para um plano</source>
        <translation>Importa un archivo a una capa</translation>
    </message>
    <message>
        <source>Arquivo de origem</source>
        <translation>Archivo de origen</translation>
    </message>
    <message>
        <source>Banco de dados</source>
        <translation>Base de datos</translation>
    </message>
    <message>
        <source>Forma das coordenadas: planar, gms, deg, sec</source>
        <translation>Forma de las coordenadas: planar, gms, deg, sec</translation>
    </message>
    <message>
        <source>Lê e confere tudo, não guarda nada</source>
        <translation>Lee y comprueba todo, no guarda nada</translation>
    </message>
    <message>
        <source>Guarda o que uma importação interrompida deixou</source>
        <translation>Guarda lo que una importación interrumpida dejó</translation>
    </message>
    <message>
        <source>Exporta um plano para um arquivo</source>
        <translation>Exporta una capa a un archivo</translation>
    </message>
    <message>
        <source>Projeto e plano</source>
        <translation>Proyecto y capa</translation>
    </message>
    <message>
        <source>Arquivo de destino</source>
        <translation>Archivo de destino</translation>
    </message>
    <message>
        <source>Categoria de objetos, com --by object</source>
        <translation>Categoría de objetos, con --by object</translation>
    </message>
    <message>
        <source>Escreve e confere tudo, não deixa nada</source>
        <translation>Escribe y comprueba todo, no deja nada</translation>
    </message>
    <message>
        <source>Converte um arquivo, por um banco de dados temporário</source>
        <translation>Convierte un archivo, mediante una base de datos temporal</translation>
    </message>
    <message>
        <source>O que converter, se há mais de um tipo: lines, polygons, ...</source>
        <translation>Qué convertir, si hay más de un tipo: lines, polygons, ...</translation>
    </message>
    <message>
        <source>Forma das coordenadas escritas: planar, gms, deg, sec</source>
        <translation>Forma de las coordenadas escritas: planar, gms, deg, sec</translation>
    </message>
    <message>
        <source>Lê, escreve e confere tudo, não deixa nada</source>
        <translation>Lee, escribe y comprueba todo, no deja nada</translation>
    </message>
    <message>
        <source>Exemplo:
  kaldex convert rios.shp rios.kdx --crs EPSG:31983</source>
        <translation>Ejemplo:
  kaldex convert rios.shp rios.kdx --crs EPSG:31983</translation>
    </message>
    <message>
        <source>Mostra o que há num banco de dados, num plano ou num arquivo</source>
        <translation>Muestra lo que hay en una base de datos, en una capa o en un archivo</translation>
    </message>
    <message>
        <source>Banco de dados ou arquivo</source>
        <translation>Base de datos o archivo</translation>
    </message>
    <message>
        <source>Projeto, ou projeto e plano</source>
        <translation>Proyecto, o proyecto y capa</translation>
    </message>
    <message>
        <source>Desenha um projeto ou plano como imagem PNG</source>
        <translation>Dibuja un proyecto o capa como imagen PNG</translation>
    </message>
    <message>
        <source>Imagem de destino</source>
        <translation>Imagen de destino</translation>
    </message>
    <message>
        <source>LARGURAxALTURA em pontos; 1200x900 sem ela</source>
        <translation>ANCHOxALTO en píxeles; 1200x900 sin ella</translation>
    </message>
    <message>
        <source>kaldex: uso errado: %1</source>
        <translation>kaldex: uso erróneo: %1</translation>
    </message>
    <message>
        <source>Veja: kaldex --help</source>
        <translation>Vea: kaldex --help</translation>
    </message>
    <message>
        <source>--scale: espera-se um número acima de zero</source>
        <translation>--scale: se espera un número mayor que cero</translation>
    </message>
    <message>
        <source>--encoding: codificação desconhecida: %1</source>
        <translation>--encoding: codificación desconocida: %1</translation>
    </message>
    <message>
        <source>espera-se PROJETO/PLANO em vez de %1</source>
        <translation>se espera PROYECTO/CAPA en vez de %1</translation>
    </message>
    <message>
        <source>--append e --overwrite não vão juntas</source>
        <translation>--append y --overwrite no van juntas</translation>
    </message>
    <message>
        <source>formato %1 desconhecido; há: %2</source>
        <translation>formato %1 desconocido; hay: %2</translation>
    </message>
    <message>
        <source>%1 não oferece %2; há: %3</source>
        <translation>%1 no ofrece %2; hay: %3</translation>
    </message>
    <message>
        <source>%1 não acrescenta a um arquivo existente</source>
        <translation>%1 no añade a un archivo existente</translation>
    </message>
    <message>
        <source>%1 não conhece --by %2</source>
        <translation>%1 no conoce --by %2</translation>
    </message>
    <message>
        <source>  %1/s  faltam %2</source>
        <translation>  %1/s  faltan %2</translation>
    </message>
    <message>
        <source>Conferido; nada foi guardado.</source>
        <translation>Comprobado; no se guardó nada.</translation>
    </message>
    <message>
        <source>Feito.</source>
        <translation>Hecho.</translation>
    </message>
    <message>
        <source> O que já estava feito ficou.</source>
        <translation> Lo que ya estaba hecho quedó.</translation>
    </message>
    <message>
        <source> Nada mudou.</source>
        <translation> Nada cambió.</translation>
    </message>
    <message>
        <source>Recusado por uma pergunta.</source>
        <translation>Rechazado por una pregunta.</translation>
    </message>
    <message>
        <source>Cancelado.</source>
        <translation>Cancelado.</translation>
    </message>
    <message>
        <source>Falhou.</source>
        <translation>Falló.</translation>
    </message>
    <message>
        <source>lidos</source>
        <translation>leídos</translation>
    </message>
    <message>
        <source>gravados</source>
        <translation>grabados</translation>
    </message>
    <message>
        <source>fora</source>
        <translation>fuera</translation>
    </message>
    <message>
        <source>renomeado</source>
        <translation>renombrado</translation>
    </message>
    <message>
        <source>codificação</source>
        <translation>codificación</translation>
    </message>
    <message>
        <source>projeção</source>
        <translation>proyección</translation>
    </message>
    <message>
        <source>arquivo</source>
        <translation>archivo</translation>
    </message>
    <message>
        <source>nota</source>
        <translation>nota</translation>
    </message>
    <message>
        <source>tempo</source>
        <translation>tiempo</translation>
    </message>
    <message>
        <source>linhas</source>
        <translation>líneas</translation>
    </message>
    <message>
        <source>polígonos</source>
        <translation>polígonos</translation>
    </message>
    <message>
        <source>pontos</source>
        <translation>puntos</translation>
    </message>
    <message>
        <source>amostras</source>
        <translation>muestras</translation>
    </message>
    <message>
        <source>isolinhas</source>
        <translation>isolíneas</translation>
    </message>
    <message>
        <source>textos</source>
        <translation>textos</translation>
    </message>
    <message>
        <source>objetos</source>
        <translation>objetos</translation>
    </message>
    <message>
        <source>registros</source>
        <translation>registros</translation>
    </message>
    <message>
        <source>colunas</source>
        <translation>columnas</translation>
    </message>
    <message>
        <source>pontos de menos</source>
        <translation>menos puntos de los necesarios</translation>
    </message>
    <message>
        <source>sem comprimento ou área</source>
        <translation>sin longitud ni área</translation>
    </message>
    <message>
        <source>fora da caixa do plano</source>
        <translation>fuera de la caja de la capa</translation>
    </message>
    <message>
        <source>registro sem geometria</source>
        <translation>registro sin geometría</translation>
    </message>
    <message>
        <source>recusado pelo plano (anel aberto, coordenada que não é número)</source>
        <translation>rechazado por la capa (anillo abierto, coordenada que no es un número)</translation>
    </message>
    <message>
        <source>polígono interno duplicado</source>
        <translation>polígono interno duplicado</translation>
    </message>
    <message>
        <source>classe não pedida</source>
        <translation>clase no pedida</translation>
    </message>
    <message>
        <source>buraco sem polígono externo (ficou como polígono)</source>
        <translation>hueco sin polígono externo (quedó como polígono)</translation>
    </message>
    <message>
        <source>valor que não cabe na coluna</source>
        <translation>valor que no cabe en la columna</translation>
    </message>
    <message>
        <source>coluna ignorada</source>
        <translation>columna ignorada</translation>
    </message>
    <message>
        <source>objeto sem geometria no plano</source>
        <translation>objeto sin geometría en la capa</translation>
    </message>
    <message>
        <source>tipo que esta operação não trata</source>
        <translation>tipo que esta operación no trata</translation>
    </message>
    <message>
        <source>pedido na linha de comando</source>
        <translation>pedido en la línea de comandos</translation>
    </message>
    <message>
        <source>arquivo .cpg</source>
        <translation>archivo .cpg</translation>
    </message>
    <message>
        <source>byte de língua do .dbf</source>
        <translation>byte de idioma del .dbf</translation>
    </message>
    <message>
        <source>pelos próprios textos</source>
        <translation>por los propios textos</translation>
    </message>
    <message>
        <source>nada indica outra</source>
        <translation>nada indica otra</translation>
    </message>
    <message>
        <source>própria do formato</source>
        <translation>propia del formato</translation>
    </message>
    <message>
        <source>o arquivo não diz; a mesma do projeto pedido</source>
        <translation>el archivo no lo dice; la misma del proyecto pedido</translation>
    </message>
    <message>
        <source>arquivo .prj</source>
        <translation>archivo .prj</translation>
    </message>
    <message>
        <source>cabeçalho do arquivo</source>
        <translation>encabezado del archivo</translation>
    </message>
    <message>
        <source>a do projeto</source>
        <translation>la del proyecto</translation>
    </message>
    <message>
        <source>nada a indica; coordenadas tomadas como estão</source>
        <translation>nada la indica; coordenadas tomadas como están</translation>
    </message>
    <message>
        <source>pelas coordenadas pedidas</source>
        <translation>por las coordenadas pedidas</translation>
    </message>
    <message>
        <source>Não sei converter %1: %2.</source>
        <translation>No se puede convertir %1: %2.</translation>
    </message>
    <message>
        <source>O nome %1 não diz em que formato escrever.</source>
        <translation>El nombre %1 no dice en qué formato escribir.</translation>
    </message>
    <message>
        <source>Não foi possível criar uma pasta temporária.</source>
        <translation>No se pudo crear una carpeta temporal.</translation>
    </message>
    <message>
        <source>%1 não oferece %2.</source>
        <translation>%1 no ofrece %2.</translation>
    </message>
    <message>
        <source>%1 não guarda nada que %2 possa receber.</source>
        <translation>%1 no guarda nada que %2 pueda recibir.</translation>
    </message>
    <message>
        <source>%1 guarda mais de um tipo; escolha com --kind: %2</source>
        <translation>%1 guarda más de un tipo; elija con --kind: %2</translation>
    </message>
    <message>
        <source>%1 não é um banco de dados geográfico: %2.</source>
        <translation>%1 no es una base de datos geográfica: %2.</translation>
    </message>
    <message>
        <source>formato</source>
        <translation>formato</translation>
    </message>
    <message>
        <source>tamanho</source>
        <translation>tamaño</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
    </message>
    <message>
        <source>modelo</source>
        <translation>modelo</translation>
    </message>
    <message>
        <source>categoria</source>
        <translation>categoría</translation>
    </message>
    <message>
        <source>conteúdo</source>
        <translation>contenido</translation>
    </message>
    <message>
        <source>caixa</source>
        <translation>caja</translation>
    </message>
    <message>
        <source>escala</source>
        <translation>escala</translation>
    </message>
    <message>
        <source>classes</source>
        <translation>clases</translation>
    </message>
    <message>
        <source>Projeto %1, projeção %2%3</source>
        <translation>Proyecto %1, proyección %2%3</translation>
    </message>
    <message>
        <source>Banco de dados sem projetos.</source>
        <translation>Base de datos sin proyectos.</translation>
    </message>
    <message>
        <source>geometria</source>
        <translation>geometría</translation>
    </message>
    <message>
        <source>seção</source>
        <translation>sección</translation>
    </message>
    <message>
        <source>%1, linha %2</source>
        <translation>%1, línea %2</translation>
    </message>
    <message>
        <source>vazio</source>
        <translation>vacío</translation>
    </message>
    <message>
        <source>Mapa desenhado: %1</source>
        <translation>Mapa dibujado: %1</translation>
    </message>
    <message>
        <source>O projeto %1 não tem planos.</source>
        <translation>El proyecto %1 no tiene capas.</translation>
    </message>
    <message>
        <source>não com</source>
        <translation>no con</translation>
    </message>
    <message>
        <source>O plano %1 não tem nada que se exporte como %2.</source>
        <translation>La capa %1 no tiene nada que se pueda exportar como %2.</translation>
    </message>
    <message>
        <source>%1 é uma pasta; espera-se o nome de um arquivo.</source>
        <translation>%1 es una carpeta; se espera el nombre de un archivo.</translation>
    </message>
    <message>
        <source>%1 é o que se lê aqui, e não pode ser o destino.</source>
        <translation>%1 es lo que se lee aquí, y no puede ser el destino.</translation>
    </message>
    <message>
        <source>kaldex: o que se ia mostrar não pôde ser escrito</source>
        <translation>kaldex: no se pudo escribir lo que se iba a mostrar</translation>
    </message>
    <message>
        <source>não pode ser vazio</source>
        <translation>no puede estar vacío</translation>
    </message>
    <message>
        <source>a do plano</source>
        <translation>la de la capa</translation>
    </message>
    <message>
        <source>Linha %1, coluna %2: %3 (%4 no arquivo); resolvido numa cópia.</source>
        <translation>Línea %1, columna %2: %3 (%4 en el archivo); resuelto en una copia.</translation>
    </message>
    <message>
        <source>Limpeza: %1 campos mudados, %2 registros completados ou encurtados.</source>
        <translation>Limpieza: %1 campos cambiados, %2 registros completados o acortados.</translation>
    </message>
    <message>
        <source>%1 campos têm aspas, que ficam no valor; --quoted as retira.</source>
        <translation>%1 campos tienen comillas, que quedan en el valor; --quoted las quita.</translation>
    </message>
    <message>
        <source> (%1 no arquivo)</source>
        <translation> (%1 en el archivo)</translation>
    </message>
    <message>
        <source>Com --quoted o arquivo é limpo antes, numa cópia.</source>
        <translation>Con --quoted el archivo se limpia antes, en una copia.</translation>
    </message>
    <message>
        <source>Não há em %1 restrições de direção entre linhas do plano.</source>
        <translation>No hay en %1 restricciones de giro entre líneas de la capa.</translation>
    </message>
    <message>
        <source>Não há nenhuma destas seções em %1: %2</source>
        <translation>No hay ninguna de estas secciones en %1: %2</translation>
    </message>
    <message>
        <source>--types: não há coluna %1 em %2.</source>
        <translation>--types: no hay columna %1 en %2.</translation>
    </message>
    <message>
        <source>--key: não há coluna %1 em %2.</source>
        <translation>--key: no hay columna %1 en %2.</translation>
    </message>
    <message>
        <source>A categoria %1 tem %2 objetos, e %3 tem %4 registros.</source>
        <translation>La categoría %1 tiene %2 objetos, y %3 tiene %4 registros.</translation>
    </message>
    <message>
        <source>A tabela já tem a coluna %1; use update.</source>
        <translation>La tabla ya tiene la columna %1; use update.</translation>
    </message>
    <message>
        <source>A tabela %1 não foi importada.</source>
        <translation>La tabla %1 no fue importada.</translation>
    </message>
    <message>
        <source>A tabela da categoria %1 não foi atualizada: não existe, ou não aceita as colunas de %2.</source>
        <translation>La tabla de la categoría %1 no fue actualizada: no existe, o no acepta las columnas de %2.</translation>
    </message>
    <message>
        <source>O nome do arquivo deve terminar em %1, para que a tabela tenha o seu.</source>
        <translation>El nombre del archivo debe terminar en %1, para que la tabla tenga el suyo.</translation>
    </message>
    <message>
        <source>O plano %1 é de modelo %2, que não tem classes nem objetos.</source>
        <translation>La capa %1 es de modelo %2, que no tiene clases ni objetos.</translation>
    </message>
    <message>
        <source>--types: espera-se COLUNA=integer, real, date, text ou text:TAMANHO em vez de %1</source>
        <translation>--types: se espera COLUMNA=integer, real, date, text o text:TAMAÑO en vez de %1</translation>
    </message>
    <message>
        <source>Formato: %1</source>
        <translation>Formato: %1</translation>
    </message>
    <message>
        <source>Modelo do plano novo: thematic, numeric, network, cadastral, object; de tabelas: nonspatial</source>
        <translation>Modelo de la capa nueva: thematic, numeric, network, cadastral, object; de tablas: nonspatial</translation>
    </message>
    <message>
        <source>O que importar: features (o que houver), lines, points, polygons, contours, samples, labels, texts, turns; table; de um csv: table, append-columns, update, statistics, nonspatial</source>
        <translation>Qué importar: features (lo que haya), lines, points, polygons, contours, samples, labels, texts, turns; table; de un csv: table, append-columns, update, statistics, nonspatial</translation>
    </message>
    <message>
        <source>Projeto e plano, ou a categoria de uma tabela; criados quando não existem</source>
        <translation>Proyecto y capa, o la categoría de una tabla; se crean cuando no existen</translation>
    </message>
    <message>
        <source>Separador de campos: um caractere, tab, ou none (nenhum)</source>
        <translation>Separador de campos: un carácter, tab, o none (ninguno)</translation>
    </message>
    <message>
        <source>Coluna (nome ou número) do csv que identifica os objetos; sem ela, o número do registro</source>
        <translation>Columna (nombre o número) del csv que identifica los objetos; sin ella, el número del registro</translation>
    </message>
    <message>
        <source>Tipos de colunas do csv: integer, real, date, text ou text:TAMANHO; sem eles, text</source>
        <translation>Tipos de columnas del csv: integer, real, date, text o text:TAMAÑO; sin ellos, text</translation>
    </message>
    <message>
        <source>Lê um csv com aspas: limpa-o antes numa cópia</source>
        <translation>Lee un csv con comillas: lo limpia antes en una copia</translation>
    </message>
    <message>
        <source>Deixa ao lado do csv a tabela ASCII a que ele foi convertido</source>
        <translation>Deja al lado del csv la tabla ASCII a la que fue convertido</translation>
    </message>
    <message>
        <source>Importa os identificadores de um arquivo e classifica por eles um plano</source>
        <translation>Importa los identificadores de un archivo y clasifica por ellos una capa</translation>
    </message>
    <message>
        <source>Exemplo:
  kaldex classify ascii classes.kdx base.gpkg mapa/solos --yes</source>
        <translation>Ejemplo:
  kaldex classify ascii clases.kdx base.gpkg mapa/suelos --yes</translation>
    </message>
    <message>
        <source>Faz a triangulação das amostras e isolinhas de um plano, em lugar da que ele tiver</source>
        <translation>Hace la triangulación de las muestras e isolíneas de una capa, en lugar de la que tenga</translation>
    </message>
    <message>
        <source>Faz tudo, não guarda nada</source>
        <translation>Hace todo, no guarda nada</translation>
    </message>
    <message>
        <source>--model nonspatial é de tabelas, não de planos</source>
        <translation>--model nonspatial es de tablas, no de capas</translation>
    </message>
    <message>
        <source>Não foi possível criar a categoria %1.</source>
        <translation>No fue posible crear la categoría %1.</translation>
    </message>
    <message>
        <source>Categoria %1 criada.</source>
        <translation>Categoría %1 creada.</translation>
    </message>
    <message>
        <source>Não há categoria com tabela de nome %1.</source>
        <translation>No hay categoría con tabla de nombre %1.</translation>
    </message>
    <message>
        <source>Não foi possível exportar a tabela da categoria %1.</source>
        <translation>No fue posible exportar la tabla de la categoría %1.</translation>
    </message>
    <message>
        <source>restrições de direção</source>
        <translation>restricciones de giro</translation>
    </message>
    <message>
        <source>arestas</source>
        <translation>aristas</translation>
    </message>
    <message>
        <source>triângulos</source>
        <translation>triángulos</translation>
    </message>
    <message>
        <source>registro de objeto que não existe</source>
        <translation>registro de un objeto que no existe</translation>
    </message>
    <message>
        <source>O plano %1 não tem amostras ou isolinhas que formem triângulos.</source>
        <translation>La capa %1 no tiene muestras o isolíneas que formen triángulos.</translation>
    </message>
    <message>
        <source>Não foi possível gravar a triangulação.</source>
        <translation>No fue posible guardar la triangulación.</translation>
    </message>
    <message>
        <source>A seção %1 de %2 não pôde ser lida até o fim.</source>
        <translation>La sección %1 de %2 no se pudo leer hasta el fin.</translation>
    </message>
    <message>
        <source>O separador &quot;%1&quot; não poderia ser lido de volta.</source>
        <translation>El separador &quot;%1&quot; no podría leerse de vuelta.</translation>
    </message>
    <message>
        <source>--separator: espera-se um caractere, tab ou none em vez de %1</source>
        <translation>--separator: se espera un carácter, tab o none en vez de %1</translation>
    </message>
    <message>
        <source>Exemplos:
  kaldex init base.gpkg
  kaldex import shapefile features rios.shp base.gpkg mapa/rios
  kaldex export ascii lines base.gpkg mapa/rios rios.kdx
  kaldex classify ascii solos.kdx base.gpkg mapa/solos
  kaldex info base.gpkg mapa/rios --json
  kaldex draw base.gpkg mapa mapa.png --size 1600x800

Código de saída: 0 feito, 1 falhou, 2 uso errado, 3 recusado por uma pergunta, 130 cancelado.</source>
        <translation>Ejemplos:
  kaldex init base.gpkg
  kaldex import shapefile features rios.shp base.gpkg mapa/rios
  kaldex export ascii lines base.gpkg mapa/rios rios.kdx
  kaldex classify ascii suelos.kdx base.gpkg mapa/suelos
  kaldex info base.gpkg mapa/rios --json
  kaldex draw base.gpkg mapa mapa.png --size 1600x800

Código de salida: 0 hecho, 1 falló, 2 uso incorrecto, 3 rechazado por una pregunta, 130 cancelado.</translation>
    </message>
    <message>
        <source>Exemplos:
  kaldex import shapefile features lotes.shp base.gpkg cidade/lotes --model cadastral --yes
  kaldex import ascii lines rios.kdx base.gpkg mapa/rios --crs EPSG:31983 --dry-run
  kaldex import shapefile contours curvas.shp base.gpkg relevo/curvas --scale 10000
  kaldex import csv table censo.csv base.gpkg censo --key codigo --types renda=real</source>
        <translation>Ejemplos:
  kaldex import shapefile features lotes.shp base.gpkg ciudad/lotes --model cadastral --yes
  kaldex import ascii lines rios.kdx base.gpkg mapa/rios --crs EPSG:31983 --dry-run
  kaldex import shapefile contours curvas.shp base.gpkg relieve/curvas --scale 10000
  kaldex import csv table censo.csv base.gpkg censo --key codigo --types renta=real</translation>
    </message>
    <message>
        <source>Projeto e plano, ou a categoria de uma tabela</source>
        <translation>Proyecto y capa, o la categoría de una tabla</translation>
    </message>
    <message>
        <source>Exemplos:
  kaldex export shapefile polygons base.gpkg cidade/lotes lotes.shp --by object
  kaldex export ascii lines base.gpkg mapa/rios rios.kdx --coords gms
  kaldex export ascii labels base.gpkg mapa/solos solos.kdx --separator &quot;;&quot;
  kaldex export ascii table base.gpkg lotes lotes.kdx</source>
        <translation>Ejemplos:
  kaldex export shapefile polygons base.gpkg ciudad/lotes lotes.shp --by object
  kaldex export ascii lines base.gpkg mapa/rios rios.kdx --coords gms
  kaldex export ascii labels base.gpkg mapa/suelos suelos.kdx --separator &quot;;&quot;
  kaldex export ascii table base.gpkg lotes lotes.kdx</translation>
    </message>
    <message>
        <source>A seção %1 (linha %2) está antes da seção %3 e seria tomada por ela; separe-as.</source>
        <translation>La sección %1 (línea %2) está antes de la sección %3 y se tomaría por ella; sepárelas.</translation>
    </message>
    <message>
        <source>Uma tabela se importa para a sua categoria: %1</source>
        <translation>Una tabla se importa a su categoría: %1</translation>
    </message>
    <message>
        <source>separador</source>
        <translation>separador</translation>
    </message>
    <message>
        <source>Tabela %1, modelo %2</source>
        <translation>Tabla %1, modelo %2</translation>
    </message>
    <message>
        <source>Modelo da categoria de uma tabela, se há duas do mesmo nome: object, nonspatial</source>
        <translation>Modelo de la categoría de una tabla, si hay dos del mismo nombre: object, nonspatial</translation>
    </message>
    <message>
        <source>A tabela de %1 é de categoria não espacial, que só de um csv se importa.</source>
        <translation>La tabla de %1 es de categoría no espacial, que solo se importa de un csv.</translation>
    </message>
    <message>
        <source>A tabela de %1 é da categoria %2, não de %3.</source>
        <translation>La tabla de %1 es de la categoría %2, no de %3.</translation>
    </message>
    <message>
        <source>identificadores</source>
        <translation>identificadores</translation>
    </message>
    <message>
        <source>polígono sem lugar para um identificador</source>
        <translation>polígono sin lugar para un identificador</translation>
    </message>
    <message>
        <source>identificador que não encontrou nada no plano</source>
        <translation>identificador que no encontró nada en la capa</translation>
    </message>
    <message>
        <source>O plano %1 é de modelo %2, que não tem classes.</source>
        <translation>La capa %1 es de modelo %2, que no tiene clases.</translation>
    </message>
    <message>
        <source>%1 não tem o plano %2.</source>
        <translation>%1 no tiene la capa %2.</translation>
    </message>
    <message>
        <source>%1 não pode ser lido como KML: %2</source>
        <translation>%1 no se puede leer como KML: %2</translation>
    </message>
    <message>
        <source>, cor %1</source>
        <translation>, color %1</translation>
    </message>
    <message>
        <source>plano</source>
        <translation>capa</translation>
    </message>
    <message>
        <source>erro</source>
        <translation>error</translation>
    </message>
    <message>
        <source>nome</source>
        <translation>nombre</translation>
    </message>
    <message>
        <source>dados</source>
        <translation>datos</translation>
    </message>
    <message>
        <source>--move: espera-se DX,DY</source>
        <translation>--move: se espera DX,DY</translation>
    </message>
    <message>
        <source>Planos do desenho (dxf) que se leem; sem eles, todos</source>
        <translation>Capas del dibujo (dxf) que se leen; sin ellas, todas</translation>
    </message>
    <message>
        <source>Desloca o desenho (dxf), depois de girar e escalar, em metros</source>
        <translation>Desplaza el dibujo (dxf), tras girar y escalar, en metros</translation>
    </message>
    <message>
        <source>Gira o desenho (dxf) em torno da origem, em graus, no sentido anti-horário</source>
        <translation>Gira el dibujo (dxf) en torno al origen, en grados, en sentido antihorario</translation>
    </message>
    <message>
        <source>Multiplica as coordenadas do desenho (dxf)</source>
        <translation>Multiplica las coordenadas del dibujo (dxf)</translation>
    </message>
    <message>
        <source>Só os textos do dxf que começam assim</source>
        <translation>Solo los textos del dxf que empiezan así</translation>
    </message>
    <message>
        <source>Só os textos do dxf que terminam assim</source>
        <translation>Solo los textos del dxf que terminan así</translation>
    </message>
    <message>
        <source>Só os textos do dxf formados de: letters, digits, both</source>
        <translation>Solo los textos del dxf formados de: letters, digits, both</translation>
    </message>
    <message>
        <source>Nome dos planos de um dxf escrito; sem ele, o do plano</source>
        <translation>Nombre de las capas de un dxf escrito; sin él, el de la capa</translation>
    </message>
    <message>
        <source>O que exportar: lines, polygons, points, points-auto, contours, samples, labels, labels-auto, labels-unclassified, labels-more, labels-swapped, table, texts, tin, tin3d, turns; all (kml)</source>
        <translation>Qué exportar: lines, polygons, points, points-auto, contours, samples, labels, labels-auto, labels-unclassified, labels-more, labels-swapped, table, texts, tin, tin3d, turns; all (kml)</translation>
    </message>
    <message>
        <source>Acrescenta a um arquivo que já existe (ascii, linhas de dxf)</source>
        <translation>Añade a un archivo existente (ascii, líneas de dxf)</translation>
    </message>
    <message>
        <source>Arquivo de destino; seu nome diz o formato (.shp, .kdx, .txt, .dxf, .gen, .kml, .kmz, .gpkg)</source>
        <translation>Archivo de destino; su nombre dice el formato (.shp, .kdx, .txt, .dxf, .gen, .kml, .kmz, .gpkg)</translation>
    </message>
    <message>
        <source>--scale-by: espera-se um número que não seja zero</source>
        <translation>--scale-by: se espera un número que no sea cero</translation>
    </message>
    <message>
        <source>lido, mas de outro tipo que o pedido na saída</source>
        <translation>leído, pero de un tipo distinto del pedido para la salida</translation>
    </message>
    <message>
        <source>%1 só pode receber um arquivo, e a saída são %2 arquivos.</source>
        <translation>%1 solo puede recibir un archivo, y la salida son %2 archivos.</translation>
    </message>
    <message>
        <source>atenção</source>
        <translation>atención</translation>
    </message>
    <message>
        <source>falta o fim do desenho</source>
        <translation>falta el final del dibujo</translation>
    </message>
    <message>
        <source>Documentos KML têm longitudes e latitudes em WGS84; --crs-from não vale.</source>
        <translation>Los documentos KML tienen longitudes y latitudes en WGS84; --crs-from no se aplica.</translation>
    </message>
</context>
</TS>
